#pragma once

#include <cstdint>
#include <string_view>

#include "model/ModelContext.h"

namespace quillon {

/// Configuration, calibration and autocalibration: what the generator reports in them, and the commands that
/// do more than send.
class Service {
public:
    explicit Service(ModelContext& context);

    /// Manual calibration on or off; on its way in the panel turns to the calibration page.
    void calibration(bool Enable, bool WithACK = false);
    /// Into manual calibration from normal operation, and back.
    void ToggleCalibrationFeature();
    /// Asks for an autocalibration, or ends the one that runs.
    void ToggleAutocalibrationFeature();
    /// The operator's answers to the question whether to autocalibrate.
    void confirm();
    void dismiss();
    /// The value that the slider stands at.
    void sendCalibrationValue();
    /// How many bits a calibration value has: 8, 10 or 12; the slider's range follows.
    void setCalibrationDataSize(std::int16_t Bits);
    /// An answer to the generator's question whether to autocalibrate is on its way: "CAU" was or will be
    /// sent, and the poll keeps away until the generator has taken it.
    [[nodiscard]] bool confirming() const { return tmrConfirm_.running(); }
    [[nodiscard]] bool answering() const { return tmrConfirm_.running() || tmrDismiss_.running(); }
    /// The generator no longer asks: its question cannot be answered any more. An answer on its way goes on.
    void withdrawQuestion();
    /// The autocalibration is over: nothing of a confirmation is sent any more, and the poll is as the
    /// console wants it.
    void abandonAnswer();

private:
    /// A handler that drops whatever is no number.
    void bindNumber(std::string_view handler, MessageDecoder::Handler work);
    void addOperations();

    void fmessConfWM(std::string_view value);
    void fmessWorkstation(std::string_view value);
    void fmessWorkstationDetectorSType(std::string_view value);
    void fmessCalibrationValue(std::string_view value);
    void fmessAutocalibration(std::string_view value);
    void fmessAutocalRetry(std::string_view value);

    void paintWorkstation(std::int32_t workstation, Colour colour);
    void beginAnswer(Signal<>& event, Timer& timer, std::int32_t confirmStep, std::int32_t dismissStep);
    void confirmTick();
    void dismissTick();
    void forgetKVP();
    void hideAnswerKeys();

    ModelContext& context_;
    LinkState& link_;
    GeneratorState& state_;
    Control& txtInfo_;
    Control& txtWorkingMode_;
    Control& txtCfgWorkingMode_;
    Control& txtCfgSyncType_;
    Control& txtCalValue_;
    Control& sldCalValue_;
    Control& cmbAutocalibration_;
    Control& cmbAutocalConfirm_;
    Control& cmbAutocalDismiss_;
    Timer& tmrConfirm_;
    Timer& tmrDismiss_;
    std::int32_t confirmWaits_ = 0; ///< ticks without an answer, never begun anew
};

} // namespace quillon
