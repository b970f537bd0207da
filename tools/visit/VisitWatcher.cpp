#include "VisitWatcher.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "link/LinkSilence.h"
#include "link/TorvaneSerial.h"
#include "tools/scenario/Reader.h"
#include "ui/ControlHost.h"

namespace quillon {

namespace {

constexpr std::size_t kKeptExamples = 10;
constexpr std::string_view kWarningKey = "WN";
constexpr std::string_view kInterlockKey = "ERL";

/// A condition that the generator reports, by the mnemonic of its message.
struct LampRow {
    std::string_view key;
    Signal<bool> LinkEvents::*event;
};

constexpr std::array kLamps{
    LampRow{"DL", &LinkEvents::WARNINGDoorOpen},     LampRow{"GL", &LinkEvents::WARNINGGenOverload},
    LampRow{"TL", &LinkEvents::WARNINGTubeOverload}, LampRow{"RL", &LinkEvents::WARNINGRotor},
    LampRow{"HL", &LinkEvents::WARNINGOverheat},     LampRow{"EL", &LinkEvents::WARNINGTechnique},
    LampRow{"CL", &LinkEvents::WARNINGCollimator},   LampRow{"FLAR", &LinkEvents::FlAlarmChange},
    LampRow{"ND", &LinkEvents::NoDigitalWarning},
};

bool isRays(std::string_view frame) {
    return frame == "RX0" || frame == "RX1";
}

} // namespace

VisitWatcher::VisitWatcher(Visit& visit, Rig& rig, Milliseconds begins)
    : visit_(visit), rig_(rig), begins_(begins), values_(visit, rig, begins), workflows_(visit.workflows),
      check_(visit.trust) {
    closeLastSession();
    visit_.sessions.push_back(begins);
    visit_.left = {};
    rig_.report.close();
    rig_.onStarted = [this] { attach(); };
    rig_.farEnd.onFrame = [this](std::string_view text) { frameWritten(text); };
    rig_.machine.port.onOpened = [this](int port, std::string_view settings) {
        visit_.port = "COM" + std::to_string(port);
        visit_.line = settings;
    };
    rig_.machine.desktop.onBox = [this](const MemoryDesktop::Shown& box) {
        visit_.questions.push_back(
            {now(), box.text,
             box.box == MemoryDesktop::Box::Question ? std::optional(box.yes) : std::nullopt});
    };
}

/// What stood when the session before ended may stand or not: nobody has seen it.
void VisitWatcher::closeLastSession() {
    const auto close = [this](auto& facts) {
        for (auto& each : facts) {
            each.span.to = each.span.to.value_or(visit_.end);
        }
    };
    close(visit_.errors);
    close(visit_.warnings);
    close(visit_.silences);
    for (ExposureFact& each : visit_.exposures) {
        each.to = each.to.value_or(visit_.end);
    }
    for (WorkflowFact& each : visit_.workflows) {
        each.open = false;
    }
}

void VisitWatcher::attach() {
    link().messageTaken().connect(
        [this](std::string_view key, std::string_view value, bool known) { taken(key, value, known); });
    watchValues();
    watchExposures();
    watchWarnings();
    watchSession();
    watchOperator();
}

void VisitWatcher::watchValues() {
    LinkEvents& events = link().events();
    events.ExposureCounter.connect(
        [this](std::int32_t number, const std::string& value) { values_.counter(number, value); });
    events.GeneratorSoftwareVersion.connect(
        [this](const std::string& version) { visit_.generatorVersion = version; });
    events.GeneratorTypeChange.connect([this](std::int32_t type) { visit_.fluoroscopy = type != 0; });
    events.HUUpdate.connect([this](std::int16_t percent) {
        if (visit_.heat.empty() || visit_.heat.back().second != percent) {
            visit_.heat.emplace_back(now(), percent);
        }
    });
    events.WrongPhase.connect([this](const std::string& message) {
        ++visit_.tally.held;
        if (visit_.tally.firstHeld.size() < kKeptExamples) {
            visit_.tally.firstHeld.emplace_back(now(), message);
        }
    });
    events.AccumulatedDose.connect([this](const std::string& dose) { visit_.accumulatedDose = dose; });
}

void VisitWatcher::watchExposures() {
    LinkEvents& events = link().events();
    events.GeneratorPhaseChange.connect([this](Phase phase) {
        if (phase == Phase::RadExposure || phase == Phase::FluoroExposure) {
            exposureBegins(phase == Phase::FluoroExposure);
        } else {
            exposureEnds(false);
            exposureEnds(true);
        }
    });
    events.XRayStatusChange.connect([this](bool on) { on ? exposureBegins(false) : exposureEnds(false); });
    events.FlExposureStatusChange.connect(
        [this](bool on) { on ? exposureBegins(true) : exposureEnds(true); });
    const auto last = [this](bool fluoroscopy) {
        const auto found =
            std::find_if(visit_.exposures.rbegin(), visit_.exposures.rend(),
                         [&](const ExposureFact& each) { return each.fluoroscopy == fluoroscopy; });
        return found == visit_.exposures.rend() ? nullptr : &*found;
    };
    events.ExposureEnd.connect([last](std::int16_t reason) {
        if (ExposureFact* exposure = last(false); exposure != nullptr && !exposure->reason) {
            exposure->reason = reason;
        }
    });
    events.PostDisplay.connect([last](const std::string& mA, const std::string& ms, const std::string& mAs) {
        if (ExposureFact* exposure = last(false); exposure != nullptr && exposure->mA.empty()) {
            exposure->mA = mA;
            exposure->ms = ms;
            exposure->mAs = mAs;
        }
    });
    events.LastExposureDose.connect([last](const std::string& dose) {
        if (ExposureFact* exposure = last(false); exposure != nullptr && exposure->dose.empty()) {
            exposure->dose = dose;
        }
    });
}

void VisitWatcher::watchWarnings() {
    LinkEvents& events = link().events();
    for (const LampRow& row : kLamps) {
        (events.*row.event).connect([this, key = row.key](bool on) { warning(key, 0, on); });
    }
    events.WarningMessage.connect([this](std::int32_t code, auto...) { warning(kWarningKey, code, true); });
    events.WarningMessageReset.connect([this] { warning(kWarningKey, 0, false); });
    events.GeneratorWSInterlockERROR.connect(
        [this](std::int16_t number) { warning(kInterlockKey, number, number != 0); });
    events.GeneratorERRORResetAck.connect([this] { warning(kInterlockKey, 0, false); });

    SessionErrors& errors = rig_.application().indicators().errors;
    errors.began.connect([this](const SessionError& error) {
        visit_.errors.push_back({{now()}, error.code, error.words});
    });
    errors.over.connect([this](ErrorEnd end) {
        if (!visit_.errors.empty()) {
            visit_.errors.back().span.to = now();
            visit_.errors.back().end = end;
        }
    });
}

void VisitWatcher::watchSession() {
    session().ended.connect(
        [this](Run run, const Ending& ending) { workflows_.ended(run, ending, session().mode(), now()); });
    session().changed.connect([this] { sessionChanged(); });
    link().events().GeneratorPhaseChange.connect([this](Phase phase) { workflows_.phaseReported(phase); });
    link().silence().changed.connect([this] { silenceChanged(); });
    rig_.application().console().events.Goodbye.connect([this] { visit_.left.closed = true; });
}

void VisitWatcher::watchOperator() {
    rig_.application().input().onGesture = [this](Gesture made, const Control& control,
                                                  std::string_view value) { gesture(made, control, value); };
}

TorvaneSerialV3_07_QLC1& VisitWatcher::link() {
    return rig_.application().link();
}

const GeneratorState& VisitWatcher::mirror() {
    return link().mirror();
}

ServiceSession& VisitWatcher::session() {
    return rig_.application().console().session();
}

void VisitWatcher::line(std::string_view line) {
    constexpr std::string_view kRecordedBy = "# Recorded by ";
    if (line.starts_with(kRecordedBy)) {
        line.remove_prefix(kRecordedBy.size());
        visit_.trust.recordedBy.emplace_back(line.substr(0, line.find(". ")));
    } else if (line.starts_with("# ")) {
        remark(line.substr(2));
    } else if (line.starts_with("gap ")) {
        visit_.trust.gaps.push_back(now());
    }
}

/// "TIME tx TEXT", "TIME lost TEXT", "TIME clock ISO", "TIME port DEVICE".
void VisitWatcher::remark(std::string_view text) {
    Milliseconds at = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), at);
    if (error != std::errc{}) {
        return;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    Reader reader(text);
    if (reader.atEnd()) {
        return;
    }
    const std::string_view word = reader.word();
    if (word == "tx") {
        check_.recorded(begins_ + at, reader.text());
    } else if (word == "lost") {
        ++visit_.tally.lost;
        visit_.left.raysLost = visit_.left.raysLost || isRays(reader.text());
    } else if (word == "clock") {
        if (const auto wall = wallTimeOf(reader.rest())) {
            visit_.clock.add(begins_ + at, *wall);
        }
    } else if (word == "port") {
        visit_.device = reader.rest();
    }
}

void VisitWatcher::frameWritten(std::string_view text) {
    ++visit_.tally.sent;
    check_.played(now(), text);

    const Handshake::Sent sent = handshake_.sent(0, text);
    visit_.tally.repeated += sent.repeats ? 1 : 0;
    unanswered(sent.before);
    lastFrame_ = text;
    values_.sent(text, sent.repeats.has_value());
    if (text == "AR" && !visit_.errors.empty() && !visit_.errors.back().span.to) {
        visit_.errors.back().byKey = true;
    } else if (isRays(text)) {
        visit_.left.raysAllowed = text == "RX1";
        visit_.left.raysAcknowledged = visit_.left.raysLost = false;
    }
}

void VisitWatcher::acknowledged() {
    if (!handshake_.acknowledged()) {
        return;
    }
    values_.acknowledged(lastFrame_);
    if (isRays(lastFrame_)) {
        visit_.left.raysAcknowledged = true;
    }
}

void VisitWatcher::unanswered(const std::optional<Handshake::Unanswered>& frame) {
    if (frame) {
        ++visit_.tally.unanswered;
        values_.unanswered(lastFrame_);
    }
}

void VisitWatcher::taken(std::string_view key, std::string_view value, bool known) {
    Tally& tally = visit_.tally;
    ++tally.heard;
    if (!known) {
        ++tally.unknown;
        if (tally.firstUnknown.size() < kKeptExamples) {
            tally.firstUnknown.emplace_back(key);
        }
        return;
    }
    if (equalsNoCase(key, "AK")) {
        acknowledged();
    } else if (equalsNoCase(key, "KV") && isNumeric(value)) {
        kVp_ = decimalText(toDouble(value));
    } else if (equalsNoCase(key, "PDK") && !visit_.exposures.empty() && isNumeric(value)) {
        visit_.exposures.back().kVp = decimalText(toDouble(value));
        visit_.exposures.back().kVpMeasured = true;
    }
    values_.taken(key, value);
}

void VisitWatcher::exposureBegins(bool fluoroscopy) {
    if (!visit_.exposures.empty() && !visit_.exposures.back().to &&
        visit_.exposures.back().fluoroscopy == fluoroscopy) {
        return;
    }
    ExposureFact exposure;
    exposure.at = now();
    exposure.fluoroscopy = fluoroscopy;
    exposure.mode = session().mode();
    exposure.lent = session().lent();
    exposure.workstation = mirror().m_Workstation;
    exposure.kVp = fluoroscopy ? mirror().m_FlKVPDisplay : kVp_;
    visit_.exposures.push_back(std::move(exposure));
}

void VisitWatcher::exposureEnds(bool fluoroscopy) {
    if (!visit_.exposures.empty() && !visit_.exposures.back().to &&
        visit_.exposures.back().fluoroscopy == fluoroscopy) {
        visit_.exposures.back().to = now();
    }
}

void VisitWatcher::warning(std::string_view key, std::int32_t number, bool on) {
    const auto open =
        std::find_if(visit_.warnings.rbegin(), visit_.warnings.rend(),
                     [key](const WarningFact& each) { return each.key == key && !each.span.to; });
    const bool stands = open != visit_.warnings.rend();
    if (stands && on && open->number == number) {
        return;
    }
    if (stands) {
        open->span.to = now();
    }
    if (on) {
        visit_.warnings.push_back({{now()}, std::string(key), number});
    }
}

void VisitWatcher::sessionChanged() {
    const Phase mode = session().mode();
    if (mode != mode_) {
        values_.modeChanges(mode_, mode);
        if (session().idle()) {
            workflows_.modeLeft(mode_, now());
        }
        mode_ = mode;
        visit_.modes.emplace_back(now(), mode);
    }
    workflows_.runs(session().run(), now());
    if (!visit_.silences.empty() && !visit_.silences.back().span.to && session().generator().isLost()) {
        visit_.silences.back().lost = true;
    }
}

void VisitWatcher::silenceChanged() {
    if (over_) {
        return; // the port closes with the program, which is half gone by then
    }
    const bool quiet = link().silence().quiet();
    const bool open = !visit_.silences.empty() && !visit_.silences.back().span.to;
    if (quiet && !open) {
        visit_.silences.push_back({{begins_ + link().silence().since()}});
    } else if (!quiet && open) {
        visit_.silences.back().span.to = now();
    }
}

void VisitWatcher::gesture(Gesture gesture, const Control& control, std::string_view value) {
    if (gesture != Gesture::Release) {
        visit_.touches.push_back({now(), nameOf(control),
                                  control.has(Property::Caption) ? control.caption() : std::string(),
                                  std::string(value)});
    }
}

void VisitWatcher::finish() {
    over_ = true;
    visit_.end = now();
    if (!rig_.started()) {
        return;
    }
    unanswered(handshake_.over());
    check_.finish(now());
    workflows_.finish(session().mode(), visit_.left.closed, now());
    visit_.left.phase = session().lastPhase();
    visit_.left.lost = session().generator().isLost();
    visit_.left.silent = link().silence().quiet();
}

} // namespace quillon
