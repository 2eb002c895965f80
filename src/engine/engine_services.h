// What the window engine needs of the desktop and of the settings, gathered so that it can be
// handed around as one thing. It owns none of them.
#pragma once

#include "platform/accessibility.h"
#include "platform/applications.h"
#include "platform/displays.h"
#include "platform/event_monitors.h"
#include "platform/user_defaults.h"
#include "platform/window_list.h"

namespace tessellon {

struct EngineServices {
    Accessibility& accessibility;
    Applications& applications;
    Displays& displays;
    WindowList& windowList;
    EventMonitors& eventMonitors;
    UserDefaults& defaults;
};

}  // namespace tessellon
