#include "console/StatusLine.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Numbers.h"
#include "console/Exposures.h"
#include "console/GeneratorSummary.h"
#include "console/Indicators.h"
#include "console/PendingKeys.h"
#include "console/UnsavedValue.h"
#include "link/LinkSilence.h"

namespace quillon {

namespace {

constexpr int kShortest = 2000; // ms; a shorter wait is over before it is read

constexpr std::array<ConsoleTimer, 2> kStartWaits{"tmrWaitStartGenerator", "tmrWaitRefresh"};
constexpr ConsoleTimer kCounterHold = "tmrResetTubeCounter";

/// The last part of a device's path.
std::string_view shortName(std::string_view device) {
    return device.substr(device.find_last_of('/') + 1); // all of it where there is none
}

Milliseconds seconds(Milliseconds time) {
    return (time + 999) / 1000;
}

/// The first of several that are parted by commas, and how many more there are.
std::string firstOf(const std::string& all) {
    const auto end = all.find(',');
    const auto more = std::count(all.begin(), all.end(), ',');
    return more == 0 ? all : all.substr(0, end) + " +" + std::to_string(more);
}

} // namespace

StatusLine::StatusLine(ConsoleContext& context, ServiceSession& session, const Indicators& indicators)
    : context_(context), session_(session), summary_(indicators.summary), exposures_(indicators.exposures),
      pending_(indicators.pending), unsaved_(indicators.unsaved) {
    const auto tell = [this](const auto&...) { changed.raise(); };
    LinkEvents& events = context_.link.events();
    session.changed.connect(tell);
    session.restScreen().screenChanged.connect(tell);
    context_.link.silence().changed.connect(tell);
    events.ExposureCounter.connect(tell);
    events.RXEnable.connect(tell);
    events.GeneratorERROR.connect(tell);
    events.GeneratorAECError.connect(tell);
    events.GeneratorERRORResetAck.connect(tell);
    events.WorkstationChange.connect(tell);
    pending_.changed.connect(tell);
    unsaved_.changed.connect(tell);
    exposures_.changed.connect(tell);
}

std::optional<Milliseconds> StatusLine::endOf(ConsoleTimer timer) const {
    if (timer.empty() || !context_.console.timer(timer).running() ||
        context_.console.timer(timer).interval() < kShortest) {
        return std::nullopt;
    }
    return context_.console.timer(timer).due();
}

Progress StatusLine::progress() const {
    const ConsoleTexts& texts = context_.texts;
    if (session_.waits()) {
        const RunRow& run = rowOf(session_.run());
        return {texts.*run.says, session_.count(), endOf(run.lastWait)};
    }
    if (const auto end = endOf(kCounterHold)) {
        return {texts.sHoldToReset, {}, end};
    }
    if (session_.idle() && session_.lastPhase() == Phase::NormalOperation) {
        for (const ConsoleTimer timer : kStartWaits) {
            if (const auto end = endOf(timer)) {
                return {texts.sReadingSettings, {}, end};
            }
        }
    }
    return {};
}

StatusField StatusLine::generator() const {
    const Tone tone = meaningOf(session_.lastPhase()).tone;
    const std::string words = summary_.state();
    if (session_.generator().isLost() || !context_.link.silence().everHeard()) {
        return {context_.texts.sStateNotKnown, Tone::Unknown};
    }
    if (tone == Tone::Alarm) {
        return {words, tone};
    }
    if (cannotTell()) {
        return {words, Tone::Unknown};
    }
    if (tone != Tone::Plain) {
        return {words, tone};
    }
    return {words, session_.generator().poweringUp() ? Tone::Waits : Tone::Plain};
}

/// What was reported last may no longer be true.
bool StatusLine::cannotTell() const {
    const LinkSilence& silence = context_.link.silence();
    return silence.quiet() || !silence.everHeard() ||
           (context_.link.PortOpen() && !context_.link.line().present());
}

bool StatusLine::didNotOpen() const {
    return !context_.link.PortOpen() && !context_.link.line().failure().empty();
}

StatusField StatusLine::line() const {
    const ConsoleTexts& texts = context_.texts;
    const LinkSilence& silence = context_.link.silence();
    const SerialPort& port = context_.link.line();
    const std::string com = "COM" + decimalText(context_.link.settings().port);
    const std::string device(shortName(port.device()));
    const auto told = [&com](const std::string& what, Tone tone) {
        return StatusField{com + ": " + what, tone};
    };
    if (!context_.link.PortOpen()) {
        return didNotOpen() ? told(texts.sLineNotOpen, Tone::Alarm) : told(texts.sLineClosed, Tone::Warning);
    }
    if (!port.present()) {
        return device.empty() ? StatusField{ConsoleTexts::filled(texts.sLineGone, {com}), Tone::Alarm}
                              : told(ConsoleTexts::filled(texts.sLineGone, {device}), Tone::Alarm);
    }
    if (silence.quiet()) {
        return told(ConsoleTexts::filled(texts.sLineQuiet,
                                         {(context_.console.schedule().now() - silence.since()) / 1000}),
                    session_.generator().isLost() ? Tone::Alarm : Tone::Warning);
    }
    if (!silence.everHeard()) {
        return told(texts.sStateUnheard, Tone::Unknown);
    }
    return {device.empty() ? com : com + " " + device, Tone::Good};
}

StatusField StatusLine::rays() const {
    const ConsoleTexts& texts = context_.texts;
    const Phase phase = session_.lastPhase();
    const bool lamp = context_.console["cmdExposure"].backColour() == kExposureColour;
    if (lamp || phase == Phase::RadExposure || phase == Phase::FluoroExposure) {
        return {texts.sRaysOn, Tone::Radiation}; // the bar and the lamp never contradict each other
    }
    if (session_.generator().isLost() || session_.generator().poweringUp() || cannotTell()) {
        return {texts.sRaysUnknown, Tone::Unknown};
    }
    if (!context_.link.mirror().RXEnable) {
        return {texts.sRaysHeld, Tone::HeldBack};
    }
    if (const std::string standing = firstOf(summary_.warnings()); !standing.empty()) {
        return {ConsoleTexts::filled(texts.sRaysRefused, {standing}), Tone::Warning};
    }
    constexpr Phases kPossible{Phase::NormalOperation, Phase::Preparation, Phase::Calibration,
                               Phase::Autocalibration};
    if (!kPossible.has(phase)) {
        return {texts.sRaysNone, Tone::HeldBack}; // the state beside it tells why
    }
    const bool error = !context_.console["lblError"].caption().empty();
    return error ? StatusField{texts.sRaysUnknown, Tone::Unknown}
                 : StatusField{texts.sRaysPossible, Tone::Plain};
}

StatusField StatusLine::alarm() const {
    if (didNotOpen()) {
        return {context_.link.line().failure(), Tone::Alarm}; // with its port and device
    }
    if (session_.generator().isLost()) {
        return {context_.texts.sCommError, Tone::Alarm};
    }
    const std::string& number = context_.console["lblError"].caption();
    const std::string& words = context_.console["lblErrorDescription"].caption();
    if (!number.empty()) {
        return {words.empty() ? context_.texts.sStateError + " " + number : number + "  " + words,
                Tone::Alarm};
    }
    return {words, Tone::Warning};
}

StatusField StatusLine::doing() const {
    if (std::string what = progress().what; !what.empty()) {
        return {std::move(what), Tone::Waits};
    }
    if (const Control* key = pending_.asked()) {
        return {ConsoleTexts::filled(context_.texts.sNotReported, {std::string_view(key->caption())}),
                Tone::Waits};
    }
    if (const Control* key = pending_.neverReported()) {
        return {ConsoleTexts::filled(context_.texts.sNeverReported, {std::string_view(key->caption())}),
                Tone::Warning};
    }
    if (unsaved_.stands() || unsaved_.wasLeft()) {
        return {unsaved_.stands() ? context_.texts.sValueNotStored : context_.texts.sValueLeft,
                Tone::Warning};
    }
    if (const Control* key = wayBack()) {
        return {ConsoleTexts::filled(context_.texts.sBackBy, {std::string_view(key->caption())}),
                Tone::Plain};
    }
    return {};
}

std::string StatusLine::howFar() const {
    const ConsoleTexts& texts = context_.texts;
    const Progress now = progress();
    if (now.count.of > 0) {
        return ConsoleTexts::filled(texts.sCountOf, {now.count.done, now.count.of});
    }
    if (now.ends) {
        return ConsoleTexts::filled(texts.sSecondsLeft,
                                    {seconds(*now.ends - context_.console.schedule().now())});
    }
    if (session_.generator().isLost()) {
        return {};
    }
    if (session_.mode() == Phase::Autocalibration) {
        return ConsoleTexts::filled(texts.sExposuresMade, {session_.count().done});
    }
    return session_.lent() ? ConsoleTexts::filled(texts.sExposuresMade, {exposures_.countLent()})
                           : std::string();
}

bool StatusLine::counting() const {
    return context_.link.silence().quiet() || session_.waits() || progress().ends.has_value() ||
           didNotOpen(); // the reason may become another one
}

} // namespace quillon
