#include "console/RemotePositioner.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "base/Colours.h"
#include "base/Fault.h"
#include "base/Numbers.h"
#include "model/Commands.h"

namespace quillon {

namespace {

/// A calibration point: the band in which its parameter is stepped, and where the table shows it.
struct PointRow {
    int lowest;
    int highest;
    ConsoleControl parameterLabel;
    ConsoleControl valueLabel;
};

// clang-format off
constexpr std::array kPointRows{
    PointRow{  0,  50, "LblParam1", "LblValue1"},
    PointRow{ 50, 100, "LblParam2", "LblValue2"},
    PointRow{100, 150, "LblParam3", "LblValue3"},
    PointRow{150, 200, "LblParam4", "LblValue4"},
};
// clang-format on

constexpr int kTenths = 10;
constexpr int kFieldWidth = 4; // digits of a stored parameter and of a stored reading
constexpr int kFieldLimit = 9999;

constexpr int kSIDStep = 10;
constexpr int kLowestSID = 100;
constexpr int kHighestSID = 2000;

/// Writes a box and clears its mark of a refused value.
void write(Control& box, std::string_view text) {
    box.setText(text);
    box.setBackColour(kWindowColour);
}

/// Whether the number fits the four digits of its field.
bool fitsField(int number) {
    return number >= 0 && number <= kFieldLimit;
}

const PointRow& rowOf(std::int16_t point) {
    return kPointRows.at(static_cast<std::size_t>(point - 1));
}

} // namespace

RemotePositioner::RemotePositioner(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session), screen_(context), console_(context.console),
      TxtParamCalib_(context.console["TxtParamCalib"]),
      TxtADCValueCalib_(context.console["TxtADCValueCalib"]), txtRemoteSID_(context.console["txtRemoteSID"]),
      tmrRequestADC_(context.console.timer("tmrRequestADC")) {
    // The parameter is stepped within its band; a typed one would be shown and not be stored.
    TxtParamCalib_.setReadOnly(true);
    bindKeys();
    connectSignals();
    tmrRequestADC_.setTick([this] { context_.link.commands().send(command("URSADCRequest")); });
}

void RemotePositioner::bindKeys() {
    console_["cmdMultiRoom"].on.press = [this] { toggle(); };
    console_["cmdUpParameter"].on.click = [this] { stepParameter(1); };
    console_["cmdDownParameter"].on.click = [this] { stepParameter(-1); };
    console_["cmdStoreCalibPoint"].on.click = [this] { storePoint(); };
    console_["cmdNextCalibPoint"].on.click = [this] { nextPoint(); };
    console_["cmdCalibrationGet"].on.click = [this] {
        context_.link.commands().send(command("URSCalibrationGet"));
    };
    console_["cmdUPSid"].on.click = [this] { stepSID(kSIDStep); };
    console_["cmdDownSID"].on.click = [this] { stepSID(-kSIDStep); };
    console_["cmdSetNewSID"].on.click = [this] { storeSID(); };
    console_["cmdRequestSID"].on.click = [this] {
        context_.link.commands().send(command("URSGetStoredSID"));
    };
    for (Control* box : {&TxtADCValueCalib_, &txtRemoteSID_}) {
        box->on.change = [box] { box->setBackColour(kWindowColour); };
    }
}

void RemotePositioner::connectSignals() {
    LinkEvents& events = context_.link.events();
    events.URSCalibrationGet.connect([this](const std::string& table) { showTable(table); });
    events.URSRequestADC.connect([this](const std::string& reading) { write(TxtADCValueCalib_, reading); });
    events.URSSidGetResponse.connect([this](std::int16_t sid) { showSID(sid); });
}

void RemotePositioner::toggle() {
    if (m_RemoteActive) {
        session_.restScreen().closeScreen();
    } else if (!session_.is(Run::Closing)) {
        session_.openScreen(console_["cmdMultiRoom"], [this] { close(); });
        open();
    }
}

void RemotePositioner::open() {
    m_RemoteActive = true;
    m_CalibPoint = 1;
    tellBounds();
    screen_.show({"fraRemote"});
    write(TxtADCValueCalib_, ""); // an old reading must not be stored with the next point
    tmrRequestADC_.run();
    context_.link.commands().send(command("URSEnterServiceMode"), 1);
    context_.link.commands().send(command("URSCalibrationGet"));
    context_.link.commands().send(command("URSGetStoredSID"));
}

void RemotePositioner::close() {
    m_RemoteActive = false;
    m_CalibPoint = 1;
    screen_.hide({"fraRemote"});
    context_.link.commands().send(command("URSEnterServiceMode"), 0);
    tmrRequestADC_.stop();
}

std::string RemotePositioner::bounds(std::int64_t lowest, std::int64_t highest) const {
    return ConsoleTexts::filled(context_.texts.sBounds, {lowest, highest});
}

void RemotePositioner::tellBounds() {
    // A typed SID may be outside of the range of its keys.
    console_["lblRemoteSID"].setNote(
        ConsoleTexts::filled(context_.texts.sBoundsOfKeys, {kLowestSID, kHighestSID}));
    console_["Label25"].setNote(bounds(0, kFieldLimit));
    const PointRow& band = rowOf(m_CalibPoint);
    console_["lblURSWHCalib1lbl"].setNote(bounds(band.lowest, band.highest));
}

void RemotePositioner::refuse(Control& box, const std::string& bounds) {
    box.setBackColour(kRefusedColour);
    context_.refused.raise(&box, bounds);
}

std::optional<std::int16_t> RemotePositioner::numberIn(Control& box) {
    std::optional<std::int16_t> number;
    try {
        number = toInt16(box.text());
    } catch (const Fault&) { // told below
    }
    if (!number || !fitsField(*number)) {
        refuse(box, bounds(0, kFieldLimit));
        return std::nullopt;
    }
    return number;
}

void RemotePositioner::stepParameter(int step) {
    const PointRow& band = rowOf(m_CalibPoint);
    const int wanted = m_CalibParameter + step;
    // Each key checks its own end of the range, so a value outside of it can be stepped back.
    const int parameter = step > 0 ? std::min(wanted, band.highest) : std::max(wanted, band.lowest);
    m_CalibParameter = static_cast<std::int16_t>(parameter);
    write(TxtParamCalib_, decimalText(m_CalibParameter));
}

void RemotePositioner::storePoint() {
    const int tenths = m_CalibParameter * kTenths;
    if (!fitsField(tenths)) {
        refuse(TxtParamCalib_, bounds(rowOf(m_CalibPoint).lowest, rowOf(m_CalibPoint).highest));
        return;
    }
    m_PointParameter.at(static_cast<std::size_t>(m_CalibPoint - 1)) = static_cast<std::int16_t>(tenths);
    const std::optional<std::int16_t> reading = numberIn(TxtADCValueCalib_);
    if (!reading) {
        return;
    }
    std::string data = decimalText(m_CalibPoint - 1);
    data.append(fixedDigits(tenths, kFieldWidth)).append(fixedDigits(*reading, kFieldWidth));
    context_.link.commands().send(command("URSCalibrationSet"), data);
}

void RemotePositioner::nextPoint() {
    m_CalibPoint = static_cast<std::int16_t>(m_CalibPoint % static_cast<int>(kPoints) + 1);
    const auto point = static_cast<std::size_t>(m_CalibPoint - 1);
    m_CalibParameter = toInt16(static_cast<double>(m_PointParameter.at(point)) / kTenths);
    console_["lblURSWHCalib1lbl"].setCaption(
        ConsoleTexts::filled(context_.texts.sPointParameter, {std::int64_t{m_CalibPoint}}));
    tellBounds();
    write(TxtParamCalib_, decimalText(m_CalibParameter));
}

void RemotePositioner::showTable(std::string_view table) {
    // Parameter and reading of each point in turn, each ended by a comma.
    for (std::size_t field = 0; field < 2 * kPoints; ++field) {
        const auto comma = table.find(',');
        if (comma == std::string_view::npos) {
            return;
        }
        const std::int16_t number = toInt16(leadingNumber(table.substr(0, comma)));
        table.remove_prefix(comma + 1);
        const PointRow& row = kPointRows.at(field / 2);
        const bool parameter = field % 2 == 0;
        (parameter ? m_PointParameter : m_PointADC).at(field / 2) = number;
        console_[parameter ? row.parameterLabel : row.valueLabel].setCaption(decimalText(number));
    }
}

void RemotePositioner::stepSID(int step) {
    const int wanted = m_RemoteSID + step;
    m_RemoteSID =
        static_cast<std::int16_t>(step > 0 ? std::min(wanted, kHighestSID) : std::max(wanted, kLowestSID));
    write(txtRemoteSID_, decimalText(m_RemoteSID));
}

void RemotePositioner::storeSID() {
    if (const std::optional<std::int16_t> sid = numberIn(txtRemoteSID_)) {
        context_.link.commands().send(command("URSSetNewRemoteSID"), *sid);
    }
}

void RemotePositioner::showSID(std::int16_t sid) {
    write(txtRemoteSID_, decimalText(sid));
    console_["TxtStoredSID"].setText(decimalText(sid));
    m_RemoteSID = sid;
}

} // namespace quillon
