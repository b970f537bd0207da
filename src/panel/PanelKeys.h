#pragma once

#include "panel/KeyNeeds.h"
#include "panel/PanelFrame.h"
#include "panel/PanelPages.h"
#include "panel/PanelSubjects.h"

namespace quillon {

/// What the keys of the panel do, as a table: a key, the touch that it answers, a condition, its work.
/// Keys that are held down to repeat are not among them. A command that the phase does not allow is refused
/// on its way out, so no key asks for the phase unless it does something else in another one.
class PanelKeys {
public:
    PanelKeys(const PanelSubjects& subjects, KeyNeeds& needs, PanelPages& pages, PanelFrame& frame);
    PanelKeys(const PanelKeys&) = delete;
    PanelKeys& operator=(const PanelKeys&) = delete;

private:
    void addNeeds();
    void wireOperations();
    void wireMessages();
    void wireMenus();
    void wireModes();
    void wireFocusConfirmation();
    void wireLists();
    void wireStatusStrip();

    void toggleConfiguration();
    void toggleCalibration();
    void toggleFocus();
    void showFocusConfirmation(bool shown);
    void resetExposureCounter();
    void minimize();

    PanelSubjects subjects_;
    KeyNeeds& needs_;
    ModelContext& context_;
    GeneratorState& state_;
    PanelHost& panel_;
    PanelPages& pages_;
    PanelFrame& frame_;
};

} // namespace quillon
