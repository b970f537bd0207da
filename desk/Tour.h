#pragma once

#include <set>

#include <QDir>
#include <QObject>
#include <QTimer>
#include <QWidget>

namespace desk {

/// The desk's part of the console's tour: beside each picture that the console leaves in the folder, one of
/// the desk at that moment.
class Tour final : public QObject {
    Q_OBJECT

public:
    Tour(QWidget& window, const QString& directory);

    /// Takes those that are missing.
    void look();

private:
    QWidget& window_;
    QDir directory_;
    std::set<QString> taken_;
    QTimer timer_;
};

} // namespace desk
