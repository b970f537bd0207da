#pragma once

#include <functional>
#include <optional>

#include "console/RecordsTexts.h"
#include "qt/Look.h"
#include "qt/RecordingState.h"
#include "qt/WindowKey.h"

namespace quillon {

class Screen;

/// The key to the records, in the ground at the top right that nothing else needs: it tells what becomes of
/// the recording, and opens the records' own window. Neither the line nor the session knows of it.
class RecordsKey final : public WindowKey {
public:
    RecordsKey(Screen& screen, const RecordsTexts& texts);

    [[nodiscard]] QString name() const override;
    [[nodiscard]] Words words() const;
    void setState(RecordingState state);
    [[nodiscard]] const RecordingState& state() const { return state_; }
    /// Opens the records that lie in a folder, or those of the installation where it is empty; says whether
    /// it could. Without it there is no program for that, and the key says so.
    std::function<bool(const std::string& folder)> onPress;

    /// Takes its place, or goes where something else is shown there.
    void settle();
    /// By a finger, or by the keyboard.
    void act();

    // Places are of the window. Each says whether the finger is on it.
    bool press(int finger, QPoint place);
    bool release(int finger, QPoint place);
    [[nodiscard]] bool covers(QPoint place) const;
    [[nodiscard]] bool holds(int finger) const { return finger_ == finger; }
    void letGo();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRect freePlace() const;

    Screen& screen_;
    const RecordsTexts& texts_;
    RecordingState state_;
    std::optional<int> finger_; ///< that is on it
};

} // namespace quillon
