#pragma once

#include <initializer_list>

#include "tests/unit/model/LinkFixture.h"

namespace quillon {

/// A report of the generator, what the field then shows, and what the host has heard.
struct Report {
    std::string_view message;
    std::string_view field;
    std::string_view caption;
    std::vector<std::string> events;
};

/// Whole conversations of the link control, and fingers on its keys.
class PanelTest : public LinkTest {
protected:
    void receive(std::initializer_list<std::string_view> messages) {
        for (const std::string_view message : messages) {
            msg(message);
        }
    }
    /// Receives messages, and what they lead to is forgotten.
    void prepare(std::initializer_list<std::string_view> messages) {
        receive(messages);
        settle();
        forget();
    }
    /// Receives the reports one after the other.
    void expectReports(const std::vector<Report>& reports) {
        for (const Report& report : reports) {
            msg(report.message);
            EXPECT_EQ(caption(report.field), report.caption) << report.message;
            EXPECT_EQ(takeEvents(), report.events) << report.message;
        }
    }
    /// The frames that leave within the next seconds.
    [[nodiscard]] std::vector<std::string> sentSoon() {
        sent.clear();
        advance(3000);
        return std::exchange(sent, {});
    }

    /// The finger goes down on a key, wherever its page is.
    bool press(std::string_view key) {
        for (Control* at = &control(key); at != nullptr; at = at->container()) {
            at->setVisible(true);
        }
        return input.press(control(key));
    }
    void release(std::string_view key) { input.release(control(key)); }
    void hold(std::string_view key, Milliseconds ms) {
        press(key);
        advance(ms);
        release(key);
    }

    /// Which of the keys of a name are lit, one character a key.
    [[nodiscard]] std::string lit(PanelControl name) const {
        std::string keys;
        for (const Control* key : link.all(name)) {
            keys.push_back(key->backColour() == kActiveColour ? '*' : '.');
        }
        return keys;
    }
};

} // namespace quillon
