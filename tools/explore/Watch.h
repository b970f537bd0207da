#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Probes.h"
#include "console/Runs.h"

namespace quillon {

/// Sees what a session reaches.
class Watch {
public:
    Watch(Rig& rig, const Facts& facts, Marks marks);

    void frameWritten(std::string_view text);
    /// Before the console learns of it.
    void reportHeard(std::string_view text);
    void handAt(std::string_view name);
    /// The key that closes does its work.
    void closes() { meets(Stimulus::CloseKey); }
    void look();
    void moved();

private:
    struct Wait {
        const Timer* timer;
        std::size_t probe;
        bool ran;
        Milliseconds due;
    };
    void meets(Stimulus stimulus);
    void watchBoxes();
    void watchStatus();
    void watchPanels();
    void watchReasons();

    Rig& rig_;
    const Facts& facts_;
    Marks marks_;
    std::vector<Wait> waits_;
    std::vector<std::size_t> whys_; ///< reasons of dead keys that nobody was told yet
    Run run_ = Run::None;
    bool lost_ = false;
    std::size_t boxes_ = 0;
};

} // namespace quillon
