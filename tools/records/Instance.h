#pragma once

#include <functional>
#include <memory>

#include <QLocalServer>
#include <QLockFile>
#include <QString>

namespace quillon {

/// There is one window of the records for each user. Who comes second asks the first to come up, with the
/// folder that it was to show.
class Instance {
public:
    Instance();

    /// This one is the first, and is told what others ask for.
    [[nodiscard]] bool isFirst() const { return first_; }
    std::function<void(const QString& folder)> onAsked;
    /// Asks the first. Says whether it has heard.
    [[nodiscard]] bool ask(const QString& folder) const;

private:
    void serve();

    QString name_; ///< of the socket
    QLockFile lock_;
    bool first_;
    QLocalServer server_;
};

} // namespace quillon
