#include "ui/Control.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Fault.h"
#include "ui/ControlHost.h"
#include "ui/ControlLock.h"

namespace quillon {

namespace {

constexpr unsigned bits(std::initializer_list<Property> properties) {
    unsigned all = 0;
    for (const Property property : properties) {
        all |= static_cast<unsigned>(property);
    }
    return all;
}

using enum Property;

struct KindRow {
    Kind kind;
    unsigned properties;
};

// clang-format off
constexpr std::array kKinds{
    KindRow{Kind::Form,    bits({Visible, Enabled, Geometry, BackColour, Tag, Caption})},
    KindRow{Kind::User,    bits({Visible, Geometry, BackColour, Tag, ToolTip})},
    KindRow{Kind::Frame,   bits({Visible, Enabled, Geometry, Font, BackColour, Tag, Caption, ToolTip})},
    KindRow{Kind::Button,  bits({Visible, Enabled, Geometry, Font, BackColour, Tag, Caption, ToolTip, Art})},
    KindRow{Kind::Label,   bits({Visible, Enabled, Geometry, Font, BackColour, Tag, Caption, ToolTip})},
    KindRow{Kind::TextBox, bits({Visible, Enabled, Geometry, Font, BackColour, Tag, Text, ToolTip})},
    KindRow{Kind::List,    bits({Visible, Enabled, Geometry, Font, BackColour, Tag, Text, Items, ToolTip})},
    KindRow{Kind::Slider,  bits({Visible, Enabled, Geometry, Tag, Range, ToolTip})},
    KindRow{Kind::Picture, bits({Visible, Enabled, Geometry, BackColour, Tag, ToolTip, Art})},
    KindRow{Kind::Timer,   bits({})},
    KindRow{Kind::Images,  bits({})},
};
// clang-format on

} // namespace

bool has(Kind kind, Property property) {
    return (kKinds[static_cast<std::size_t>(kind)].properties & static_cast<unsigned>(property)) != 0;
}

Control::Control(Kind kind, std::string_view name, std::optional<int> index)
    : kind_(kind), name_(name), index_(index) {
    if (kind == Kind::TextBox || kind == Kind::List) {
        backColour_ = kWindowColour;
    }
}

void Control::require(Property property) const {
    if (!has(property)) {
        throw Fault(Fault::kPropertyRefused);
    }
}

template <typename T, typename V> void Control::assign(Property property, T& member, V&& value) {
    require(property);
    const bool renewed = reported(property);
    if (!assign(member, std::forward<V>(value)) && renewed) {
        notify();
    }
}

template <typename T, typename V> bool Control::assign(T& member, V&& value) {
    if (member != value) {
        member = std::forward<V>(value);
        notify();
        return true;
    }
    return false;
}

bool Control::reported(Property property) {
    const ReportAge* age = host_ == nullptr ? nullptr : host_->reportAge();
    const bool value = property == Caption || property == Text || property == Range ||
                       (property == BackColour && kind_ == Kind::Button); // a key's light
    if (age == nullptr || !age->reporting || !value) {
        return false;
    }
    return std::exchange(reportedIn_, age->time) < age->time;
}

bool Control::old() const {
    const ReportAge* age = host_ == nullptr ? nullptr : host_->reportAge();
    return age != nullptr && reportedIn_ != 0 && reportedIn_ < age->time;
}

void Control::forgetReport() {
    if (std::exchange(reportedIn_, 0) != 0) {
        notify();
    }
}

Control::~Control() {
    for (ControlLock* lock : locks_) {
        lock->forget(*this);
    }
}

bool Control::visible() const {
    require(Visible);
    return visible_;
}

void Control::setVisible(bool visible) {
    timesTaken_ += visible_ && !visible ? 1U : 0U;
    assign(Visible, visible_, visible);
}

bool Control::enabled() const {
    require(Enabled);
    return enabled_ && (!locked() || kind_ == Kind::Frame);
}

void Control::setEnabled(bool enabled) {
    timesTaken_ += enabled_ && !enabled ? 1U : 0U;
    assign(Enabled, enabled_, enabled);
}

const Place& Control::place() const {
    require(Property::Geometry);
    return place_;
}

void Control::setTop(Twips top) {
    setPlace({place_.left, top, place_.width, place_.height});
}

void Control::setWidth(Twips width) {
    setPlace({place_.left, place_.top, width, place_.height});
}

void Control::setHeight(Twips height) {
    setPlace({place_.left, place_.top, place_.width, height});
}

void Control::setPlace(const Place& place) {
    const bool sized = place_.width != place.width || place_.height != place.height;
    assign(Property::Geometry, place_, place);
    if (sized) {
        resized();
    }
}

double Control::fontSize() const {
    require(Font);
    return fontSize_;
}

void Control::setFontSize(double points) {
    assign(Font, fontSize_, points);
}

Colour Control::backColour() const {
    require(BackColour);
    return backColour_;
}

void Control::darken(Colour colour) {
    setBackColour(colour);
    darkened_ = true;
}

void Control::setBackColour(Colour colour) {
    darkened_ = false;
    assign(BackColour, backColour_, colour);
}

const std::string& Control::tag() const {
    require(Tag);
    return tag_;
}

void Control::setTag(std::string_view tag) {
    assign(Tag, tag_, tag);
}

const std::string& Control::caption() const {
    require(Caption);
    return caption_;
}

void Control::setCaption(std::string_view caption) {
    assign(Caption, caption_, caption);
}

void Control::restoreCaption(std::string_view caption) {
    require(Caption);
    assign(caption_, caption);
}

const std::string& Control::text() const {
    require(Text);
    return caption_;
}

void Control::setText(std::string_view text) {
    if (has(Items)) {
        const auto entry = std::find(items_.begin(), items_.end(), text);
        setListIndex(entry == items_.end() ? -1 : static_cast<int>(entry - items_.begin()));
        return;
    }
    assign(Text, caption_, text);
}

const std::string& Control::toolTip() const {
    require(ToolTip);
    return toolTip_;
}

void Control::setToolTip(std::string_view text) {
    assign(ToolTip, toolTip_, text);
}

const std::vector<std::string>& Control::items() const {
    require(Items);
    return items_;
}

void Control::setItems(std::vector<std::string> items) {
    require(Items);
    items_ = std::move(items);
    listIndex_ = -1;
    caption_.clear();
    notify();
}

int Control::listIndex() const {
    require(Items);
    return listIndex_;
}

void Control::setListIndex(int index) {
    require(Items);
    if (index < -1 || index >= static_cast<int>(items_.size())) {
        throw Fault(Fault::kSubscript);
    }
    if (index != listIndex_) {
        listIndex_ = index;
        caption_ = index < 0 ? std::string{} : items_[static_cast<std::size_t>(index)];
        notify();
    }
}

std::int32_t Control::value() const {
    require(Range);
    return value_;
}

void Control::setValue(std::int32_t value) {
    assign(Range, value_, std::clamp(value, 0, maximum_));
}

std::int32_t Control::maximum() const {
    require(Range);
    return maximum_;
}

void Control::setMaximum(std::int32_t maximum) {
    assign(Range, maximum_, std::max(maximum, 0));
    setValue(value_);
}

std::int32_t Control::selectionStart() const {
    require(Range);
    return selectionStart_;
}

void Control::setSelectionStart(std::int32_t start) {
    assign(Range, selectionStart_, std::clamp(start, 0, maximum_));
}

const std::string& Control::art() const {
    require(Art);
    return art_;
}

void Control::setRole(Role role) {
    assign(role_, role);
}

void Control::setBlocked(bool kept) {
    assign(blocked_, kept);
}

void Control::setNote(std::string_view note) {
    assign(note_, note);
}

void Control::setArt(std::string_view art) {
    assign(Art, art_, art);
}

void Control::setArtSize(int size) {
    assign(Art, artSize_, size);
}

void Control::setReadOnly(bool readOnly) {
    assign(Text, readOnly_, readOnly);
}

void Control::setMultiLine(bool multiLine) {
    assign(Text, multiLine_, multiLine);
}

void Control::setBorder(bool border) {
    assign(Property::Geometry, border_, border);
}

bool Control::shown() const {
    for (const Control* at = this; at != nullptr; at = at->container_) {
        if (!at->visible()) {
            return false;
        }
    }
    return true;
}

int Control::zOrder() const {
    if (container_ == nullptr) {
        return 0;
    }
    const auto& siblings = container_->stack_;
    return static_cast<int>(std::find(siblings.begin(), siblings.end(), this) - siblings.begin());
}

void Control::bringToFront() {
    if (container_ != nullptr && container_->stack_.back() != this) {
        std::erase(container_->stack_, this);
        container_->stack_.push_back(this);
        container_->notify();
    }
}

void Control::sendToBack() {
    if (container_ != nullptr && container_->stack_.front() != this) {
        std::erase(container_->stack_, this);
        container_->stack_.insert(container_->stack_.begin(), this);
        container_->notify();
    }
}

ChangeSink* Control::sink() const {
    return container_ == nullptr ? nullptr : container_->sink();
}

void Control::notify() {
    if (ChangeSink* window = sink()) {
        window->controlChanged(*this);
    }
}

std::string Control::onScreen(std::string_view words) const {
    const Phrases* phrases = host_ == nullptr ? nullptr : host_->phrases();
    return phrases == nullptr ? std::string(words) : phrases->shown(words);
}

} // namespace quillon
