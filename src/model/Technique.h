#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/CalibrationItem.h"
#include "model/ModelContext.h"

namespace quillon {

/// The exposure values kVp, mA, ms and mAs, the focal spot and the technique mode: what the generator reports
/// of them, and how they are set.
class Technique {
public:
    explicit Technique(ModelContext& context);

    /// Each is kept and sent; what the generator made of it comes back as a report.
    void setKVP(std::int16_t value);
    void setMA(double value);
    void setMS(double value);
    void setMAS(double value);
    /// Only sends: the mode changes when the generator says so.
    void setTechniqueMode(std::int32_t mode);
    /// 0 asks for the small focus, any other number for the large one. Nothing is sent for a focus that is
    /// selected already, or of which nothing is known.
    void setFocus(std::int32_t focus);
    /// Asks for the technique mode, where the installation has one.
    void TMReq();

private:
    struct Quantity;
    struct Report;
    struct FocalSpot;
    struct Flag;
    static const Quantity kKVP;
    static const Quantity kMA;
    static const Quantity kMS;
    static const Quantity kMAS;
    static const Report kReports[];
    static const FocalSpot kFocalSpots[];
    static const Flag kFlags[];

    void bindReports();
    void addProperties();

    void report(const Report& row, std::string_view value, Control& normal, Control& service);
    void fmessFocus(const FocalSpot& row, std::string_view value);
    void fmessTM(std::string_view value);
    void fmessPostDisplay(std::string_view value);

    // Keep text and number of a report. False when it is not to be shown.
    bool storeKVP(std::string_view value);
    bool storeMA(std::string_view value);
    bool storeMS(std::string_view value);
    bool storeMAS(std::string_view value);

    // What a report does while the service fields are in use; a repeated one is only shown.
    void serveKVP(Control& field, bool repeated);
    void serveKVPDisplay(Control& field, bool repeated);
    void serveMA(Control& field, bool repeated);
    void serveMADisplay(Control& field, bool repeated);

    ModelContext& context_;
    LinkState& link_;
    GeneratorState& state_;
    CalibrationItem item_;
    std::vector<Control*> cmbTM_;
    Control& lblWarning_;
    Control& txtFocus_;
    Control& txtFocusCal_;
    Control& txtInfo_;
};

} // namespace quillon
