#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "PlayCheck.h"
#include "ValueWatcher.h"
#include "Visit.h"
#include "WorkflowWatcher.h"
#include "model/GeneratorState.h"
#include "tools/replay/Handshake.h"
#include "tools/scenario/Rig.h"
#include "ui/Input.h"

namespace quillon {

/// Fills a visit from a rig that plays one of its recordings. Facts come from the program's own signals and
/// from its mirror of the generator, as they are behind each message.
class VisitWatcher {
public:
    /// The session begins at that time of the visit.
    VisitWatcher(Visit& visit, Rig& rig, Milliseconds begins);
    VisitWatcher(const VisitWatcher&) = delete;
    VisitWatcher& operator=(const VisitWatcher&) = delete;

    /// A line of the recording, which is carried out next.
    void line(std::string_view line);
    /// The recording is over.
    void finish();

private:
    void closeLastSession();
    void attach();
    void watchValues();
    void watchExposures();
    void watchWarnings();
    void watchSession();
    void watchOperator();
    [[nodiscard]] Milliseconds now() const { return begins_ + rig_.machine.time.now(); }
    [[nodiscard]] TorvaneSerialV3_07_QLC1& link();
    [[nodiscard]] const GeneratorState& mirror();
    [[nodiscard]] ServiceSession& session();

    void remark(std::string_view text);
    void frameWritten(std::string_view text);
    void acknowledged();
    void unanswered(const std::optional<Handshake::Unanswered>& frame);
    void taken(std::string_view key, std::string_view value, bool known);
    void exposureBegins(bool fluoroscopy);
    void exposureEnds(bool fluoroscopy);
    void warning(std::string_view key, std::int32_t number, bool on);
    void sessionChanged();
    void silenceChanged();
    void gesture(Gesture gesture, const Control& control, std::string_view value);

    Visit& visit_;
    Rig& rig_;
    Milliseconds begins_;
    ValueWatcher values_;
    WorkflowWatcher workflows_;
    PlayCheck check_;
    Handshake handshake_;
    std::string lastFrame_;
    std::string kVp_; ///< as it was set last
    Phase mode_ = Phase::None;
    bool over_ = false; ///< finish() was called
};

} // namespace quillon
