#pragma once

#include <QObject>
#include <QTimer>

namespace desk {

/// Keys of the keyboard that are held. One that repeats may be told as a release and a press right behind it,
/// so a release counts only when no press has followed for a while.
class KeyHold final : public QObject {
    Q_OBJECT

public:
    KeyHold();

    /// `key`: a bit for each.
    void set(int key, bool down);
    /// All are let go at once: the window does not hear of them any more.
    void clear();
    [[nodiscard]] int held() const { return held_; }

signals:
    void changed();

private:
    QTimer release_;
    int held_ = 0;
    int letting_ = 0; ///< those of them that may have been let go
};

} // namespace desk
