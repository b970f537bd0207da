#pragma once

#include <QTimer>

namespace quillon {

/// Asks the system to run this program's thread before all ordinary ones, so that a busy PC does not hold up
/// the line: where the account's limits allow it, or through RealtimeKit; otherwise nothing happens.
/// QUILLON_PRIORITY=no leaves it. A thread that works a tenth of a second without a pause falls back for some
/// seconds.
class Priority final : public QObject {
public:
    Priority();

private:
    void ask();

    QTimer again_;
};

} // namespace quillon
