#pragma once

#include <functional>
#include <vector>

#include <QLabel>
#include <QListWidget>

#include "Page.h"
#include "Sticks.h"

namespace quillon {

/// A folder to save to, chosen by a finger or by the keyboard.
class PlacePage final : public QWidget {
public:
    explicit PlacePage(const PageContext& context);

    /// Begins at the first stick, or at home; ends with the folder, or with nothing.
    void choose(const std::vector<Stick>& sticks, std::function<void(const QString& folder)> chosen);
    void cancel();

private:
    void enter(const QString& folder);
    void finish(const QString& folder);

    QLabel* path_;
    QListWidget* folders_;
    QPushButton* here_ = nullptr;
    std::vector<Stick> sticks_;
    QString folder_;
    std::function<void(const QString& folder)> chosen_;
};

} // namespace quillon
