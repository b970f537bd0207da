#include "console/AutocalibrationChoice.h"

#include <utility>

#include "base/Numbers.h"
#include "console/panels/ctrASelFocusOrParam.h"

namespace quillon {

namespace {

constexpr std::string_view kSelectWorkstation = "SelWSAutocal";
constexpr std::string_view kSelectPoint = "AutocalSelFocusOrParameter";
constexpr std::string_view kWarning = "AutocalWarning";
constexpr std::string_view kOk = "OK";

} // namespace

void AutocalibrationChoice::ask(std::function<void()> chosen, std::function<void()> cancelled) {
    chosen_ = std::move(chosen);
    cancelled_ = std::move(cancelled);
    panels_.open(kSelectWorkstation, [this](ModalPanel&, std::string_view event, std::int16_t workstation) {
        if (event == kOk) {
            panels_.remove(kSelectWorkstation);
            context_.state.m_SelectedWorkstation = workstation;
            askPoint();
        }
    });
    session_.restScreen().showPositionerKey(false);
}

void AutocalibrationChoice::askPoint() {
    panels_.open(kSelectPoint, [this](ModalPanel& panel, std::string_view event, std::int16_t) {
        if (event != kOk) {
            cancelled_();
            return;
        }
        const auto choice = dynamic_cast<const ctrASelFocusOrParam&>(panel).choice();
        context_.state.m_SelAutocalmA = choice.station;
        context_.state.m_AutocalSmallFocus = choice.smallFocus;
        context_.state.m_AutocalLargeFocus = choice.largeFocus;
        context_.state.m_AutocalParameter = choice.parameter;
        const std::string point = wordsFor(panel);
        panels_.remove(kSelectPoint);
        warn(point);
    });
    session_.restScreen().showPositionerKey(false);
}

std::string AutocalibrationChoice::wordsFor(ModalPanel& choice) const {
    const std::string station = "WS" + decimalText(context_.state.m_SelectedWorkstation) + ", ";
    if (!context_.state.m_SelAutocalmA) {
        return station + "E" + decimalText(context_.state.m_AutocalParameter);
    }
    const std::string_view key =
        context_.state.m_AutocalSmallFocus ? "cmbAutocalSmallFocus" : "cmbAutocalLargeFocus";
    return station + context_.texts.sFocus + ": " + choice.at(key).caption();
}

void AutocalibrationChoice::warn(const std::string& point) {
    panels_.open(kWarning, [this](ModalPanel&, std::string_view event, std::int16_t) {
        if (event != kOk) {
            cancelled_();
            return;
        }
        panels_.remove(kWarning);
        chosen_();
    });
    if (ControlHost* panel = context_.console.keyed(kWarning)) {
        panel->at("Shape1").setNote(point);
    }
}

} // namespace quillon
