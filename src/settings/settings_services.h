// What the pages of the settings window read, change and set off, gathered so that it can be handed
// around as one thing. It owns none of them.
#pragma once

#include "arrangements/arrangement_store.h"
#include "base/notification_center.h"
#include "drag/drag_views.h"
#include "engine/window_engine.h"
#include "platform/application_directory.h"
#include "platform/login_item.h"
#include "platform/run_loop.h"
#include "platform/updater.h"
#include "platform/user_defaults.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/recorder.h"

#include <functional>
#include <memory>
#include <string>

namespace tessellon {

struct SettingsServices {
    /// Also the way to the screens and to what runs.
    WindowEngine& engine;
    UserDefaults& defaults;
    KeyBindings& keyBindings;
    Hotkeys& hotkeys;
    Recorder& recorder;
    ArrangementStore& arrangements;
    const ApplicationDirectory& directory;
    LoginItem& loginItem;
    Updater& updater;
    NotificationCenter& notifications;
    RunLoop& runLoop;
    /// Makes what a preview of a snap is drawn with.
    std::function<std::unique_ptr<DragViews>()> makeDragViews;
    /// The version that runs, such as "1.2.3".
    std::string version;
};

}  // namespace tessellon
