#pragma once

#include <cassert>
#include <cstdint>
#include <functional>
#include <list>

namespace quillon {

/// A typed event with any number of listeners, called in the order in which they connected. The list may
/// change while it is walked: a listener that was taken off is not called any more, and one that was added
/// hears the next event.
template <typename... Arguments> class Signal {
public:
    using Listener = std::function<void(const Arguments&...)>;
    /// Names a listener for disconnect().
    using Connection = std::uint64_t;

    Connection connect(Listener listener) {
        listeners_.push_back({++last_, std::move(listener)});
        return last_;
    }

    /// Connects in front of all others: for who records events before anybody reacts to them.
    Connection observe(Listener listener) {
        listeners_.push_front({++last_, std::move(listener)});
        return last_;
    }

    void disconnect(Connection connection) {
        for (auto& entry : listeners_) {
            if (entry.connection == connection) {
                entry.connection = 0;
            }
        }
        sweep();
    }

    void raise(const Arguments&... arguments) {
        const Connection newest = last_;
        const Walk walk(*this);
        for (auto& entry : listeners_) {
            if (entry.connection != 0 && entry.connection <= newest) {
                entry.listener(arguments...);
            }
        }
    }

private:
    struct Entry {
        Connection connection;
        Listener listener;
    };

    /// Also when a listener ends with a fault, the list is whole again, and what was taken off is gone.
    class Walk {
    public:
        explicit Walk(Signal& signal) : signal_(signal) { ++signal_.walking_; }
        ~Walk() {
            --signal_.walking_;
            signal_.sweep();
        }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

    private:
        Signal& signal_;
    };

    void sweep() {
        assert(walking_ >= 0);
        if (walking_ == 0) {
            listeners_.remove_if([](const Entry& entry) { return entry.connection == 0; });
        }
    }

    std::list<Entry> listeners_;
    Connection last_ = 0;
    int walking_ = 0;
};

} // namespace quillon
