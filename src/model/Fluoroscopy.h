#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/CommandTable.h"
#include "model/ModelContext.h"

namespace quillon {

/// Fluoroscopy: its values, its switches, and the tracking of the kVp along a curve.
class Fluoroscopy {
public:
    explicit Fluoroscopy(ModelContext& context);

    void setFlKVP(std::int16_t value);
    /// One step. With both handshakings on it is sent again, up to five times, until the generator reports
    /// the kVp.
    void FlKVPOneUp();
    void FlKVPOneDown();

    void FlKVPToggleKVPTracking();
    /// Another curve: the generator's while tracking is on, else the one that tracking will start with.
    void FlKVPTrackingUp();
    void FlKVPTrackingDown();
    /// The curve while tracking is on, 0 while it is off.
    [[nodiscard]] std::int32_t FlKVPTrackingActive() const;
    /// Defines a tracking curve in the generator ("KVTF"). The poll keeps away for a while.
    void KVPTrackingFormula(std::int16_t formula, std::int16_t A, std::int16_t B, std::int16_t mA,
                            std::int16_t ms);

    void FlContinuousToggle();

private:
    struct ValueRow;

    void bindValues();
    void bindHandlers();
    void addOperations();

    void fmessValue(const ValueRow& row, Control& field, std::string_view value);
    void kVpReported(bool numeric);
    void ppsReported(bool numeric);
    void showMA(std::int16_t mA, std::string_view value, Signal<std::string>& event);
    void fmessFlMAG(std::string_view value);
    void fmessFlContrast(std::string_view value);
    void fmessFLKVPTracking(std::string_view value);
    void fmessFlDetected(std::string_view value);

    void stepOnce(std::string_view mnemonic, bool& armed);
    void repeatStep();
    void stepTracking(CommandFor<> command, std::int32_t by);

    ModelContext& context_;
    LinkState& link_;
    GeneratorState& state_;
    Timer& tmrAutorepFlKVP_;
    std::vector<Control*> cmbFlMag_;
    Control& cmbFlContinuous_;
    Control& cmbFlKVPTracking_;
    Control& txtFlKVPTracking_;
    Control& txtCfgKVTracking_;
    Control& txtFlMA_;
    Control& txtFlContrast_;
    Control& txtRAD_RF_;

    bool contrastShown_ = false; // the generator has let the present step be shown
    bool FLKVPDoubleHandshaking_ = false;
    bool m_FlKVPRetryUp = false; // a step awaits the report of the kVp
    bool m_FlKVPRetryDown = false;
    std::int16_t m_FlKVPRetryCount = 0;
};

} // namespace quillon
