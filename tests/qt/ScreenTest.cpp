#include <QLineEdit>
#include <QPointer>

#include "Bench.h"

namespace quillon {
namespace {

/// Counts how often a widget is painted.
class PaintCounter final : public QObject {
public:
    bool eventFilter(QObject* /*widget*/, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

using ScreenTest = WindowTest;

TEST_F(ScreenTest, WidgetsComeAndGoWithTheControls) {
    Control& key = add(Kind::Button, "cmbKey", {152, 307, 1500, 600});
    EXPECT_EQ(screen.view(key), nullptr) << "shown at the end of the turn, not before";
    turn();
    ASSERT_NE(screen.view(key), nullptr);
    EXPECT_EQ(screen.view(key)->geometry(), QRect(10, 20, 100, 40));
    EXPECT_TRUE(screen.view(key)->isVisible());

    ControlFactory factory;
    factory.add("Quillon.ctrPanel", [this] {
        auto made = std::make_unique<ControlHost>(Kind::User, "ctrPanel", schedule);
        made->add(Kind::Button, "cmbOK").setPlace({0, 0, 1500, 1500});
        return made;
    });
    ControlHost& panel = form.addByClass("Quillon.ctrPanel", "Panel", factory);
    panel.setPlace({3000, 0, 1500, 1500});
    panel.setVisible(true);
    turn();
    const QPointer<ControlView> panelView = screen.view(panel);
    const QPointer<ControlView> innerView = screen.view(panel.at("cmbOK"));
    ASSERT_TRUE(panelView != nullptr && innerView != nullptr && innerView->isVisible());

    // A panel's key takes the panel away from inside its own handler.
    panel.at("cmbOK").on.click = [this] { form.removeKeyed("Panel"); };
    tap({250, 50});
    EXPECT_FALSE(panelView->isVisible());
    turn();
    EXPECT_TRUE(panelView == nullptr && innerView == nullptr);
    EXPECT_TRUE(screen.view(key)->isVisible());
}

TEST_F(ScreenTest, ManyChangesInOneTurnArePaintedOnce) {
    Control& label = add(Kind::Label, "txtKVp", {0, 0, 1500, 600});
    constexpr int kPainted = 60; // the platform paints when it thinks fit
    rest(kPainted);
    PaintCounter counter;
    screen.view(label)->installEventFilter(&counter);
    for (int i = 0; i < 200; ++i) {
        label.setCaption(std::to_string(i));
        label.setBackColour(i % 2 == 0 ? kActiveColour : kNormalColour);
    }
    rest(kPainted);
    EXPECT_EQ(counter.paints, 1);
    label.setCaption("199");
    rest(kPainted);
    EXPECT_EQ(counter.paints, 1) << "nothing has changed";
}

TEST_F(ScreenTest, TheStackDecidesWhatIsInFront) {
    Control& back = add(Kind::Label, "lblBack", {0, 0, 1500, 600});
    Control& front = add(Kind::Label, "lblFront", {0, 0, 1500, 600});
    turn();
    const auto top = [this] { return screen.window().childAt(5, 5); };
    EXPECT_EQ(top(), screen.view(front));
    EXPECT_EQ(&screen.controlAt({5, 5}), &front);
    back.bringToFront();
    turn();
    EXPECT_EQ(top(), screen.view(back));
    EXPECT_EQ(&screen.controlAt({5, 5}), &back);
    back.setVisible(false);
    EXPECT_EQ(&screen.controlAt({5, 5}), &front);
}

TEST_F(ScreenTest, EveryStateOfAKeyLooksDifferent) {
    Control& key = add(Kind::Button, "cmbKey", {0, 0, 1500, 600});
    key.setCaption("Key");
    turn();
    // Without colour: the state has to show to an operator who can't tell colours apart.
    const auto look = [&] {
        turn();
        return screen.view(key)->grab().toImage().convertToFormat(QImage::Format_Mono);
    };
    std::vector<QImage> looks;
    for (const Colour colour : {kActiveColour, kErrorFlashColour, kNormalColour}) {
        key.setBackColour(colour);
        looks.push_back(look());
    }
    screen.view(key)->setPressed(true);
    looks.push_back(look());
    screen.view(key)->setPressed(false);
    key.setEnabled(false);
    looks.push_back(look());
    for (std::size_t i = 0; i < looks.size(); ++i) {
        for (std::size_t j = i + 1; j < looks.size(); ++j) {
            EXPECT_NE(looks[i], looks[j]) << i << " and " << j;
        }
    }
}

TEST_F(ScreenTest, TheWindowFollowsTheFormAndAsksBeforeItCloses) {
    EXPECT_EQ(screen.window().size(), QSize(400, 300));
    form.setCaption("Service");
    form.setPlace({0, 0, 9000, 6000});
    turn();
    EXPECT_EQ(screen.window().size(), QSize(600, 400));
    EXPECT_EQ(screen.window().windowTitle(), "Service");
    EXPECT_EQ(resized, Place{}) << "its own change is not the operator's";

    screen.window().resize(640, 480);
    turn();
    EXPECT_EQ(resized, (Place{0, 0, 9600, 7200}));

    screen.window().setReadable();
    for (const Place small : {Place{0, 0, 4500, 10500}, Place{0, 0, 4500, 15}}) {
        form.setPlace(small); // by the configuration's width and height
        turn();
        EXPECT_EQ(screen.window().size(), FormWindow::kSmallest.expandedTo(toPixels(small).size()));
        EXPECT_EQ(toPixels(resized).size(), screen.window().size());
    }

    screen.window().close();
    EXPECT_TRUE(screen.window().isVisible());
    EXPECT_EQ(closeRequests, 1);
    form.setVisible(false);
    turn();
    EXPECT_FALSE(screen.window().isVisible());
}

TEST_F(ScreenTest, TypedTextReachesTheControlAndWrittenTextTellsNobody) {
    Control& box = add(Kind::TextBox, "txtSID", {0, 0, 1500, 600});
    record(box);
    turn();
    auto* line = qobject_cast<QLineEdit*>(screen.view(box)->editor());
    ASSERT_NE(line, nullptr);
    const auto typed = [line](Qt::Key code, const char* text) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(line, &press);
    };
    typed(Qt::Key_1, "1");
    typed(Qt::Key_Space, " ");
    typed(Qt::Key_2, "2");
    EXPECT_EQ(box.text(), "1 2");
    EXPECT_EQ(takeLog(), "txtSID change, txtSID change, txtSID change, ");
    box.setText("\x80");
    turn();
    EXPECT_EQ(line->text(), QString(QChar(0x20AC)));
    EXPECT_EQ(takeLog(), "");

    // What can't be reached takes no text, and the box shows what the control holds.
    input.boxOpened();
    typed(Qt::Key_3, "3");
    EXPECT_EQ(line->text(), QString(QChar(0x20AC)));
}

TEST(Convert, EveryByteSurvivesTheWindow) {
    std::string bytes;
    for (int code = 1; code < 256; ++code) {
        bytes.push_back(static_cast<char>(code));
    }
    EXPECT_EQ(fromQt(toQt(bytes)), bytes);
    EXPECT_EQ(fromQt(QString(QChar(0x4E2D))), "?");
    EXPECT_EQ(toQtLines("a\r\nb\rc\nd"), "a\nb\nc\nd");
    EXPECT_EQ(fromQtLines("a\nb"), "a\r\nb");
}

} // namespace
} // namespace quillon
