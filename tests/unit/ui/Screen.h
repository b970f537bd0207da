#pragma once

#include <memory>

#include "runtime/MemoryPlatform.h"
#include "ui/ControlHost.h"

namespace quillon {

/// A form with a user control that holds a frame with a key in it.
struct TestScreen {
    VirtualTime time;
    ControlHost form{Kind::Form, "frm", time.schedule()};
    ControlHost& user = form.adopt(std::make_unique<ControlHost>(Kind::User, "usr", time.schedule()));
    Control& frame = user.add(Kind::Frame, "fra");
    Control& key = user.add(Kind::Button, "key", std::nullopt, &frame);
};

} // namespace quillon
