#pragma once

#include <QObject>

namespace quillon {

/// Tells on standard error how long the process took to its first painted window. On only when the
/// environment variable QUILLON_STARTUP_TRACE is set.
class StartupTrace final : public QObject {
public:
    explicit StartupTrace(QObject& window);
    bool eventFilter(QObject* window, QEvent* event) override;
};

} // namespace quillon
