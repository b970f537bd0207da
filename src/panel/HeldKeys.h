#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

#include "panel/KeyNeeds.h"
#include "panel/PanelSubjects.h"

namespace quillon {

/// The keys that repeat while a finger stays on them. A press makes one step at once; from then on one timer,
/// shared by all of them, does its work again, after ten ticks other work at another pace. While a key
/// is held the poll is silent and no message waits for an acknowledgement.
///
/// The last press owns the timer, and any release stops it.
class HeldKeys {
public:
    HeldKeys(const PanelSubjects& subjects, KeyNeeds& needs);
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

private:
    /// In ms.
    struct Intervals {
        std::int16_t KVPAutorepeatSlowInterval = 400;
        std::int16_t KVPAutorepeatFastInterval = 500;
        std::int16_t MAAutorepeatSlowInterval = 400;
        std::int16_t MASAutorepeatSlowInterval = 400;
        std::int16_t m_MSAutorepeatInterval = 400;
        std::int16_t m_FlKVPSlowInterval = 200;
        std::int16_t m_FlKVPFastInterval = 500;
        std::int16_t m_FlKVPOneStepInterval = 400;
        std::int16_t FLPPSSlowInterval = 400;
        std::int16_t BrightnessSlowInterval = 400;
        std::int16_t BrightnessFastInterval = 300;
        std::int16_t DensitySlowInterval = 500;
        std::int16_t calibration = 400;
        std::int16_t stationFast = 350;
    };
    enum class Condition : std::uint8_t;
    struct Row;
    /// A key, its twin, and the rows of which the first that applies is taken at a press.
    struct Hold {
        std::span<const Row> rows;
        bool stepped = false; ///< its press had an effect and it was not let go yet
    };

    [[nodiscard]] static std::span<const Row> table();

    void addIntervals();
    void addRoutines(Hold& hold);
    void wireKeys(Hold& hold);
    void addNeeds(const Hold& hold, KeyNeeds& needs);

    void press(Hold& hold);
    void release(Hold& hold);
    void cancel(Hold& hold);
    void stop();
    void tick();

    [[nodiscard]] bool holds(Condition condition) const;
    [[nodiscard]] static Hindrance hindranceOf(Condition condition);
    /// Makes the calibration value empty where another station is about to be chosen. False outside
    /// calibration, where the station's keys do nothing.
    bool leaveStation();

    PanelSubjects subjects_;
    ModelContext& context_;
    LinkState& link_;
    Timer& tmrAutoRepeat_;
    Control& txtCalValue_;
    Control& sldCalValue_;
    Intervals intervals_;
    std::vector<Hold> holds_;

    KeyWork m_AutorepeatSlowRoutine = nullptr;
    KeyWork m_AutorepeatFastRoutine = nullptr;
    std::int16_t m_AutorepeatFastInterval = 0;
    std::int16_t m_AutorepeatTicks = 0;
};

} // namespace quillon
