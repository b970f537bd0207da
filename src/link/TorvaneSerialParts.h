#pragma once

#include "link/CommunicationLog.h"
#include "link/FrameReceiver.h"
#include "link/LinkSilence.h"
#include "link/MessageDecoder.h"
#include "link/OutboundTable.h"
#include "link/PortControl.h"
#include "link/SendPath.h"
#include "link/StatusPoll.h"
#include "link/TorvaneSerial.h"
#include "model/Commands.h"
#include "model/ErrorsAndWarnings.h"
#include "model/ExposureControl.h"
#include "model/Fluoroscopy.h"
#include "model/ModelContext.h"
#include "model/PhaseReports.h"
#include "model/Positioner.h"
#include "model/Programs.h"
#include "model/Records.h"
#include "model/Service.h"
#include "model/Technique.h"
#include "panel/Blinking.h"
#include "panel/HeldKeys.h"
#include "panel/KeyNeeds.h"
#include "panel/PanelFrame.h"
#include "panel/PanelKeys.h"
#include "panel/PanelPages.h"

namespace quillon {

/// What the link control is made of, and how the parts are wired. Only the control itself knows it.
struct TorvaneSerialV3_07_QLC1::Parts {
    Parts(PanelHost& host, const Context& context);

    void addOperations();
    void applyFacts();
    void applyDesignStore();
    void setFromGUI(bool embedded);
    void setTempUserMode(bool on);

    PanelHost& panel;
    SerialPort& port;
    Folder& folder;
    bool fromGUI = false;
    bool TempUserMode = false;

    LinkState state;
    GeneratorState generator;
    LinkEvents events;
    Signal<std::string_view, std::string_view, bool> taken;
    Operations operations;
    Handlers& handlers;
    Signal<Cause, int>::Connection faults = 0;
    InstallationFacts facts;
    MessageDecoder decoder;
    LinkSettings settings;
    CommunicationLog log;
    SendPath send;
    LinkSilence silence;
    StatusPoll poll;
    FrameReceiver receiver;
    PortControl portControl;
    Commands commands;
    PanelPages pages;
    PanelFrame frame;
    ModelContext context;

    ErrorTable& errorTable;
    Service service;
    PhaseReports phase;
    Technique technique;
    ErrorsAndWarnings errors;
    ExposureControl exposureControl;
    Fluoroscopy fluoroscopy;
    Programs programs;
    Positioner positioner;
    Records records;
    Blinking blinking;
    PanelSubjects subjects{context, service, errors, exposureControl, fluoroscopy};
    KeyNeeds needs;
    HeldKeys heldKeys;
    PanelKeys panelKeys;
};

} // namespace quillon
