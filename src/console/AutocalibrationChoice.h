#pragma once

#include <functional>
#include <string>

#include "console/ServiceSession.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// What is to be autocalibrated, asked by three panels, one after the other: a workstation, then one focal
/// spot's currents or one parameter, then whether it is meant.
class AutocalibrationChoice {
public:
    AutocalibrationChoice(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels)
        : context_(context), session_(session), panels_(panels) {}

    /// The choice is in the console's state when `chosen` is called. The first panel has no key that cancels.
    void ask(std::function<void()> chosen, std::function<void()> cancelled);

private:
    void askPoint();
    /// What was chosen, in words: "WS3, Focus: Small".
    [[nodiscard]] std::string wordsFor(ModalPanel& choice) const;
    void warn(const std::string& point);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsolePanels& panels_;
    std::function<void()> chosen_;
    std::function<void()> cancelled_;
};

} // namespace quillon
