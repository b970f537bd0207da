#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QString>
#include <QTimer>

#include "qt/Screen.h"
#include "runtime/Clock.h"
#include "ui/ControlHost.h"

namespace quillon {

/// During a tour message boxes are answered with the key that refuses, and their words printed on standard
/// output. Made before the window, as boxes may come before it.
class BoxCloser {
public:
    explicit BoxCloser(const Clock& clock);

private:
    void look() const;

    const Clock& clock_;
    QTimer timer_;
};

/// A look round for somebody without a display: watches the console come up against a generator, enters a
/// mode through the operator's own keys, tells on standard output what was seen and when, and keeps pictures
/// of it.
class Tour {
public:
    Tour(ControlHost& form, Screen& screen, Input& input, const Clock& clock, QString directory);

    /// Called once, when there is nothing more to see.
    std::function<void()> onFinished;
    [[nodiscard]] bool finished() const { return finished_; }
    /// The mode keys came alive in time.
    [[nodiscard]] bool passed() const { return ready_ > 0; }

private:
    /// Something on the screen whose changes are told.
    struct Watched {
        std::string title;
        std::string owner;
        std::string name;
        std::string seen;
    };

    void look();
    void tellChanges();
    void goOn();
    void finish();
    void picture(const char* name);
    [[nodiscard]] const Control* control(std::string_view owner, std::string_view name) const;
    [[nodiscard]] bool modeKeysAlive() const;

    ControlHost& form_;
    Screen& screen_;
    Input& input_;
    const Clock& clock_;
    QString directory_;
    QTimer timer_;
    std::vector<Watched> watched_;
    Milliseconds shown_ = 0;
    Milliseconds ready_ = 0;
    Milliseconds entered_ = 0;
    int pictures_ = 0;
    bool poweringUp_ = false;
    bool versions_ = false;
    bool finished_ = false;
};

} // namespace quillon
