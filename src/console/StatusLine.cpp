#include "console/StatusLine.h"

#include <array>

#include "link/LinkSilence.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

constexpr int kShortest = 2000; // ms; a shorter wait is over before it is read

struct RunText {
    Run run;
    std::string T::*text;
};

// clang-format off
constexpr std::array kRunTexts{
    RunText{Run::EnteringConfiguration,   &T::sEnterConfiguration},
    RunText{Run::LeavingConfiguration,    &T::sExitConfiguration},
    RunText{Run::EnteringCalibration,     &T::sEnterCalibration},
    RunText{Run::LeavingCalibration,      &T::sExitCalibration},
    RunText{Run::Lending,                 &T::sExitCalibration},
    RunText{Run::EnteringAutocalibration, &T::sEnterAutocal},
    RunText{Run::HandingOver,             &T::sInitAutocal},
    RunText{Run::LeavingAutocalibration,  &T::sExitAutocal},
    RunText{Run::ReadingCounters,         &T::sReadingExpCounters},
};
// clang-format on

constexpr std::array<std::string_view, 2> kStartWaits{"tmrWaitStartGenerator", "tmrWaitRefresh"};

Milliseconds seconds(Milliseconds time) {
    return (time + 999) / 1000;
}

} // namespace

StatusLine::StatusLine(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session) {
    session.changed.connect([this] { changed.raise(); });
    context_.link.silence().changed.connect([this] { changed.raise(); });
    context_.link.events().ExposureCounter.connect(
        [this](std::int32_t, const std::string&) { changed.raise(); });
}

std::optional<Milliseconds> StatusLine::endOf(std::string_view timer) const {
    if (timer.empty() || !context_.console.timer(timer).running() ||
        context_.console.timer(timer).interval() < kShortest) {
        return std::nullopt;
    }
    return context_.console.timer(timer).due();
}

Progress StatusLine::progress() const {
    const ConsoleTexts& texts = context_.texts;
    if (session_.waits()) {
        for (const RunText& row : kRunTexts) {
            if (session_.is(row.run)) {
                return {texts.*row.text, session_.count(), endOf(rowOf(row.run).lastWait)};
            }
        }
    }
    if (session_.idle() && session_.lastPhase() == Phase::NormalOperation) {
        for (const std::string_view timer : kStartWaits) {
            if (const auto end = endOf(timer)) {
                return {texts.sReadingSettings, {}, end};
            }
        }
    }
    return {};
}

std::string StatusLine::silence() const {
    const LinkSilence& silence = context_.link.silence();
    if (!silence.quiet()) {
        return {};
    }
    return ConsoleTexts::filled(context_.texts.sNoAnswer,
                                {(context_.console.schedule().now() - silence.since()) / 1000});
}

std::string StatusLine::doing() const {
    const std::string what = progress().what;
    return what.empty() || context_.console["lblHelp"].visible() ? std::string() : what + " ...";
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
    return session_.mode() == Phase::Autocalibration && !session_.isLost()
               ? ConsoleTexts::filled(texts.sExposuresMade, {session_.count().done})
               : std::string();
}

bool StatusLine::counting() const {
    return context_.link.silence().quiet() || session_.waits() || progress().ends.has_value();
}

} // namespace quillon
