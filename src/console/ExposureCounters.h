#pragma once

#include <cstdint>
#include <string_view>

#include "console/ServiceSession.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// The screen of the exposure counters: read one by one at the pace of the generator, and reset by a key that
/// has to be held, and a question.
class ExposureCounters {
public:
    ExposureCounters(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels);

    /// Begins a reading, or takes the screen away.
    void ToggleExposureCounterView();

private:
    void open();
    void close();
    /// The screen goes and forgets what it showed.
    void clearScreen();
    [[nodiscard]] RunHooks hooks();
    void readTick();
    void endReading();
    void abortReading();
    void exposureCounter(std::int32_t counter, std::string_view value);
    void showTubes2And3(std::string_view value);
    void showThirdTube(std::string_view value);
    void showScreen();
    void keep(std::int32_t counter, std::string_view value);
    void bindResetKeys();
    void askForReset();
    /// While the question is open the reset keys are disabled: the answer is about the counter it names.
    void showQuestion(bool show);
    void resetCounter();
    void YieldEvents(int count);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsolePanels& panels_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    ConsoleHost& console_;
    Timer& tmrReadExposureCounters_;
    Timer& tmrResetTubeCounter_;
    int step_ = 0;
};

} // namespace quillon
