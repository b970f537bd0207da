#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Colours.h"

namespace quillon {

/// One 1440th of an inch, the unit of every place and size on the screen.
using Twips = std::int32_t;

enum class Kind : std::uint8_t {
    Form,
    User,
    Frame,
    Button,
    Label,
    TextBox,
    List,
    Slider,
    Picture,
    Timer,
    Images
};

/// What a label or a key is there for: how it looks follows.
enum class Role : std::uint8_t {
    Plain,
    Title,
    Field,
    Prompt,    ///< what the operator is asked to do, or to wait for
    Radiation, ///< warns of radiation; a key that leads to it
    Decline,   ///< a key that refuses what is asked
    Toggle,    ///< a key that is lit while what it switches is on
    Choice,    ///< a key among others of which the chosen one is lit
    // From here on, what the generator or the console lights: the more it matters the further down.
    Lamp,
    Good,
    Warning,
    Interlock, ///< an alarm among others in little room
    Alarm,
};

/// Where a label's text stands. Two labels that are one phrase meet in the middle.
enum class TextSide : std::uint8_t { Middle, Left, PhraseStart, PhraseEnd };

enum class Look : std::uint8_t {
    Plain,
    OffWhenEmpty, ///< a field: a report that leaves it empty says that something is off
    WhileOffered, ///< a key: there is nothing to see of it while it is disabled
};

/// What a kind of control may have. A property that the kind lacks refuses the read and the write.
enum class Property : std::uint16_t {
    Visible = 1,
    Enabled = 2,
    Geometry = 4, ///< left, top, width, height and z-order
    Font = 8,
    BackColour = 16,
    Tag = 32,
    Caption = 64,
    Text = 128,  ///< text of a text box or of a list's selection
    Items = 256, ///< the entries of a list
    Range = 512, ///< value and maximum of a slider
    Art = 1024,  ///< a drawn picture
    ToolTip = 2048,
};

[[nodiscard]] bool has(Kind kind, Property property);

struct Place {
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;
    bool operator==(const Place&) const = default;
};

class Control;
class ControlHost;
class ControlLock;

/// Told of every change below a form; the window's mirror of the controls.
class ChangeSink {
public:
    virtual ~ChangeSink() = default;
    virtual void controlChanged(Control& control) = 0;
    virtual void controlAdded(Control& control) = 0;
    virtual void controlRemoved(Control& control) = 0;
};

/// What happens to a control by the operator's hand. Writing a property never calls any of these.
struct ControlHandlers {
    std::function<void()> press;   ///< pointer down
    std::function<void()> release; ///< pointer up; over the control, unless its press does something
    std::function<void()> click;   ///< pointer up over the control that was pressed
    std::function<void()> abandon; ///< pointer up elsewhere, or over a control that is out of reach: no click
    std::function<void()> cancel;  ///< the hold was broken off: nothing of the three above follows
    std::function<void()> change;  ///< typed text, a list's selection, a slider on the move
};

/// One control on the screen: its properties, its handlers, its place in the tree.
class Control {
public:
    Control(Kind kind, std::string_view name, std::optional<int> index = std::nullopt);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] std::optional<int> index() const { return index_; }
    [[nodiscard]] bool has(Property property) const { return quillon::has(kind_, property); }

    [[nodiscard]] bool visible() const;
    void setVisible(bool visible);
    /// What was last written, or False while a lock is on the control. A frame goes on reading its own.
    [[nodiscard]] bool enabled() const;
    /// What was last written, and holds once no lock is on the control.
    [[nodiscard]] bool offered() const { return enabled_; }
    /// A panel or a screen of its own keeps it, and all that lies on it, from the operator.
    [[nodiscard]] bool locked() const { return !locks_.empty(); }
    void setEnabled(bool enabled);
    /// How often it was disabled or hidden: a press does not outlive that.
    [[nodiscard]] unsigned timesTaken() const { return timesTaken_; }
    [[nodiscard]] Twips left() const { return place().left; }
    [[nodiscard]] Twips top() const { return place().top; }
    [[nodiscard]] Twips width() const { return place().width; }
    [[nodiscard]] Twips height() const { return place().height; }
    [[nodiscard]] const Place& place() const;
    void setTop(Twips top);
    void setWidth(Twips width);
    void setHeight(Twips height);
    /// Moves and resizes in one step.
    void setPlace(const Place& place);
    /// In points.
    [[nodiscard]] double fontSize() const;
    void setFontSize(double points);
    [[nodiscard]] Colour backColour() const;
    void setBackColour(Colour colour);
    /// Makes a key that is on dark for a moment, to draw attention; it is not off by that.
    void darken(Colour colour);
    [[nodiscard]] bool darkened() const { return darkened_; }
    [[nodiscard]] const std::string& tag() const;
    void setTag(std::string_view tag);
    [[nodiscard]] const std::string& caption() const;
    void setCaption(std::string_view caption);
    /// Shows the same again without making the value new, also in a report.
    void restoreCaption(std::string_view caption);
    /// What a text box holds, or the selected entry of a list. Writing a list's text selects the first entry
    /// of that text, and nothing when it has none.
    [[nodiscard]] const std::string& text() const;
    void setText(std::string_view text);
    [[nodiscard]] const std::string& toolTip() const;
    void setToolTip(std::string_view text);

    [[nodiscard]] const std::vector<std::string>& items() const;
    void setItems(std::vector<std::string> items);
    /// -1 while no entry is selected. Faults on an index that the list does not have.
    [[nodiscard]] int listIndex() const;
    void setListIndex(int index);

    [[nodiscard]] std::int32_t value() const;
    /// Kept between 0 and the maximum.
    void setValue(std::int32_t value);
    [[nodiscard]] std::int32_t maximum() const;
    void setMaximum(std::int32_t maximum);
    /// Where a slider's marked range begins.
    [[nodiscard]] std::int32_t selectionStart() const;
    void setSelectionStart(std::int32_t start);

    /// The name of the picture to draw, such as "up", "down", "preparation", "exposure", "rest".
    [[nodiscard]] const std::string& art() const;
    void setArt(std::string_view art);
    /// Which of the picture's sizes, as an image list counts them; 0 for the only one.
    [[nodiscard]] int artSize() const { return artSize_; }
    void setArtSize(int size);

    [[nodiscard]] Role role() const { return role_; }
    void setRole(Role role);
    /// Lit for the operator and never by a finger: it looks the same whether it is enabled or not.
    [[nodiscard]] bool lamp() const { return role_ >= Role::Lamp; }
    /// It can be pressed but would do nothing, as an error stands.
    [[nodiscard]] bool blocked() const { return blocked_; }
    void setBlocked(bool kept);
    /// Words that the window writes beside what the control shows, or that a screen reader says instead.
    [[nodiscard]] const std::string& note() const { return note_; }
    void setNote(std::string_view note);
    /// Written when the control is made.
    [[nodiscard]] TextSide textSide() const { return textSide_; }
    void setTextSide(TextSide side) { textSide_ = side; }
    /// ms that a finger has to stay on the key for its press to count; 0 for a key that acts at once.
    [[nodiscard]] int holdTime() const { return holdTime_; }
    void setHoldTime(int ms) { holdTime_ = ms; }
    /// A peculiarity of its look that its properties do not express. Written when it is made.
    [[nodiscard]] Look look() const { return look_; }
    void setLook(Look look) { look_ = look; }
    /// A field whose report has left it empty, which says that something is off.
    [[nodiscard]] bool saysOff() const { return look_ == Look::OffWhenEmpty && caption_.empty() && known(); }

    /// A text box that shows and does not take text.
    [[nodiscard]] bool readOnly() const { return readOnly_; }
    void setReadOnly(bool readOnly);
    [[nodiscard]] bool multiLine() const { return multiLine_; }
    void setMultiLine(bool multiLine);
    /// A panel's frame and three-dimensional look.
    [[nodiscard]] bool border() const { return border_; }
    void setBorder(bool border);

    /// What it holds was reported before the last silence, and not since.
    [[nodiscard]] bool old() const;
    /// What it holds was reported.
    [[nodiscard]] bool known() const { return reportedIn_ != 0; }
    /// Forgets that it was reported, whatever it shows.
    void forgetReport();

    /// What the screen shows for its words: the host's phrases may replace them in another language.
    [[nodiscard]] std::string onScreen(std::string_view words) const;

    /// What it lies on; empty for a form.
    [[nodiscard]] Control* container() const { return container_; }
    /// Whose control it is; empty for a form.
    [[nodiscard]] ControlHost* host() const { return host_; }
    /// The controls that lie on this one, from the back to the front.
    [[nodiscard]] const std::vector<Control*>& stack() const { return stack_; }
    /// Its own visibility and that of all around it.
    [[nodiscard]] bool shown() const;
    /// 0 at the back.
    [[nodiscard]] int zOrder() const;
    void bringToFront();
    void sendToBack();

    ControlHandlers on;

protected:
    void notify();
    virtual void resized() {}
    [[nodiscard]] virtual ChangeSink* sink() const;

private:
    friend class ControlHost;
    friend class ControlLock;

    void require(Property property) const;
    /// Says whether a value that was old is reported now.
    bool reported(Property property);
    template <typename T, typename V> void assign(Property property, T& member, V&& value);
    /// Says whether it was another value.
    template <typename T, typename V> bool assign(T& member, V&& value);

    Kind kind_;
    std::string name_;
    std::optional<int> index_;
    Control* container_ = nullptr;
    ControlHost* host_ = nullptr;
    std::vector<Control*> stack_;

    Place place_;
    double fontSize_ = 8;
    Colour backColour_ = kNormalColour;
    std::string tag_;
    std::string caption_;
    std::string toolTip_;
    std::string art_;
    std::string note_;
    std::vector<std::string> items_;
    int listIndex_ = -1;
    std::int32_t value_ = 0;
    std::int32_t maximum_ = 10;
    std::int32_t selectionStart_ = 0;
    int artSize_ = 0;
    int holdTime_ = 0;
    bool visible_ = true;
    bool enabled_ = true;
    unsigned timesTaken_ = 0;
    std::vector<ControlLock*> locks_;
    std::uint32_t reportedIn_ = 0; ///< the time of its last report; 0 for none
    Role role_ = Role::Plain;
    TextSide textSide_ = TextSide::Middle;
    Look look_ = Look::Plain;
    bool readOnly_ = false;
    bool multiLine_ = false;
    bool border_ = true;
    bool blocked_ = false;
    bool darkened_ = false;
};

} // namespace quillon
