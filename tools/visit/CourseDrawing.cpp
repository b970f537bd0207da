#include "CourseDrawing.h"

#include <algorithm>
#include <array>

#include "VisitHtml.h"
#include "base/Numbers.h"

namespace quillon {

namespace {

// In pixels.
constexpr double kWidth = 900;
constexpr double kHeight = 150;
constexpr double kLeft = 38;
constexpr double kRight = 894;
constexpr double kTop = 12;
constexpr double kBottom = 126;

struct Band {
    Phase mode;
    std::string_view colour;
};
constexpr std::array kBands{
    Band{Phase::Configuration, "#cfe3c6"},
    Band{Phase::Calibration, "#b9cfe6"},
    Band{Phase::Autocalibration, "#f0dca8"},
    Band{Phase::NormalOperation, "#dfe6ea"},
};
constexpr std::string_view kNoMode = "#ffffff";

std::string_view colourOf(Phase mode) {
    const auto* const band = std::ranges::find(kBands, mode, &Band::mode);
    return band == kBands.end() ? kNoMode : band->colour;
}

std::string number(double value) {
    return fixedDecimals(value, 1);
}

class Drawing {
public:
    Drawing(const Visit& visit, const ReportWords& words) : visit_(visit), words_(words) {}

    std::string draw() {
        svg_ = "<svg viewBox='0 0 900 150' role='img' aria-label='" + escaped(spoken()) + "'>\n";
        bands();
        silences();
        axis();
        heat();
        marks();
        return svg_ + "</svg>\n" + legend();
    }

private:
    [[nodiscard]] double x(Milliseconds at) const {
        const double share = visit_.end > 0 ? static_cast<double>(at) / static_cast<double>(visit_.end) : 0;
        return kLeft + share * (kRight - kLeft);
    }
    static double y(int percent) { return kBottom - std::clamp(percent, 0, 100) / 100.0 * (kBottom - kTop); }

    [[nodiscard]] std::string spoken() const {
        int least = 100;
        int most = 0;
        for (const auto& [at, percent] : visit_.heat) {
            least = std::min(least, percent);
            most = std::max(most, percent);
        }
        if (visit_.heat.empty()) {
            return words_.texts()["NoHeat"];
        }
        return words_.texts().with("CourseSpoken",
                                   {decimalText(std::int32_t{least}), decimalText(std::int32_t{most}),
                                    ReportWords::length(visit_.end), std::to_string(visit_.exposures.size()),
                                    std::to_string(visit_.errors.size())});
    }

    void box(Milliseconds from, Milliseconds to, std::string_view fill) {
        svg_ += "<rect x='" + number(x(from)) + "' y='" + number(kTop) + "' width='" +
                number(std::max(x(to) - x(from), 0.5)) + "' height='" + number(kBottom - kTop) + "' fill='" +
                std::string(fill) + "'/>\n";
    }

    void bands() {
        for (std::size_t i = 0; i < visit_.modes.size(); ++i) {
            const Milliseconds to = i + 1 < visit_.modes.size() ? visit_.modes[i + 1].first : visit_.end;
            box(visit_.modes[i].first, to, colourOf(visit_.modes[i].second));
        }
    }

    void silences() {
        svg_ +=
            "<defs><pattern id='h' width='6' height='6' patternUnits='userSpaceOnUse' "
            "patternTransform='rotate(45)'><rect width='3' height='6' fill='#8894a0'/></pattern></defs>\n";
        for (const SilenceFact& each : visit_.silences) {
            box(each.span.from, each.span.to.value_or(visit_.end), "url(#h)");
        }
    }

    void axis() {
        for (const int percent : {0, 50, 100}) {
            const std::string at = number(y(percent));
            svg_.append("<line x1='38' x2='894' y1='").append(at).append("' y2='").append(at);
            svg_ += "' stroke='#9aa7b2' stroke-width='.5'/><text x='33' y='" + number(y(percent) + 4) +
                    "' text-anchor='end' font-size='11'>" + std::to_string(percent) + " %</text>\n";
        }
        constexpr int kTicks = 8;
        for (int i = 0; i <= kTicks; ++i) {
            const Milliseconds at = visit_.end * i / kTicks;
            svg_ += "<text x='" + number(x(at)) + "' y='143' text-anchor='" +
                    (i == 0        ? "start"
                     : i == kTicks ? "end"
                                   : "middle") +
                    "' font-size='11'>" + visit_.clock.text(at) + "</text>\n";
        }
    }

    [[nodiscard]] bool silentAt(Milliseconds at) const {
        return std::ranges::any_of(visit_.silences, [&](const SilenceFact& each) {
            return at >= each.span.from && at < each.span.to.value_or(visit_.end);
        });
    }

    /// What was told before a silence, through it, and what was told behind it. Days of steps become no more
    /// points than there are pixels.
    void heat() {
        std::vector<std::pair<Milliseconds, int>> points;
        double last = -1;
        for (const auto& [at, percent] : visit_.heat) {
            const bool near = !points.empty() && x(at) - last < 0.5;
            const bool turns =
                points.size() > 1 &&
                (percent > points.back().second) != (points.back().second > points[points.size() - 2].second);
            if (near && !turns) {
                points.back().second = percent;
            } else {
                points.emplace_back(at, percent);
                last = x(at);
            }
        }
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Milliseconds from = points[i].first;
            const Milliseconds to = i + 1 < points.size() ? points[i + 1].first : visit_.end;
            const int next = i + 1 < points.size() ? points[i + 1].second : points[i].second;
            stretch(from, to, points[i].second);
            run_ += "V" + number(y(next));
        }
        flush();
    }

    void stretch(Milliseconds from, Milliseconds to, int percent) {
        Milliseconds at = from;
        for (const SilenceFact& each : visit_.silences) {
            const Milliseconds begin = std::max(each.span.from, at);
            const Milliseconds end = std::min(each.span.to.value_or(visit_.end), to);
            if (begin < end) {
                go(at, begin, percent, false);
                go(begin, end, percent, true);
                at = end;
            }
        }
        go(at, to, percent, false);
    }

    void go(Milliseconds from, Milliseconds to, int percent, bool dashed) {
        if (to <= from) {
            return;
        }
        if (run_.empty() || dashed != dashed_) {
            flush();
            dashed_ = dashed;
            run_ = "M" + number(x(from)) + " " + number(y(percent));
        }
        run_ += "H" + number(x(to));
    }

    void flush() {
        if (!run_.empty()) {
            svg_ += "<path d='" + run_ + "' fill='none' stroke='#16324a' stroke-width='2'" +
                    (dashed_ ? " stroke-dasharray='4 3'" : "") + "/>\n";
        }
        run_.clear();
    }

    void marks() {
        for (const ExposureFact& each : visit_.exposures) {
            svg_ += "<path d='M" + number(x(each.at)) + " 126v-9' stroke='#8a4b00' stroke-width='2.5'/>\n";
        }
        for (const ErrorFact& each : visit_.errors) {
            svg_ += "<path d='M" + number(x(each.span.from)) + " 12l-5 -9h10z' fill='#a3191f'/>\n";
        }
    }

    [[nodiscard]] std::string legend() const {
        std::string text = "<p class=note>";
        for (const Band& band : kBands) {
            text += "<svg class=key viewBox='0 0 14 11'><rect width='14' height='11' fill='" +
                    std::string(band.colour) + "' stroke='#9aa7b2'/></svg> " +
                    escaped(words_.mode(band.mode)) + " &nbsp; ";
        }
        return text + "</p>\n";
    }

    const Visit& visit_;
    const ReportWords& words_;
    std::string svg_;
    std::string run_; ///< of the heat line
    bool dashed_ = false;
};

} // namespace

std::string courseDrawing(const Visit& visit, const ReportWords& words) {
    return Drawing(visit, words).draw();
}

} // namespace quillon
