// The panel in which the user picks a snap or types to find one.
#pragma once

#include "base/notification_center.h"
#include "base/token.h"
#include "engine/window_engine.h"
#include "launcher/launcher_model.h"
#include "platform/beep.h"
#include "platform/event_monitors.h"
#include "platform/key_event.h"
#include "platform/panel.h"

#include <memory>
#include <optional>
#include <string_view>

namespace tessellon {

/// Where the launcher's panel comes from.
class LauncherViews {
  public:
    virtual ~LauncherViews() = default;

    /// A panel that shows the model and is as large as that needs (the size of its frame, in
    /// device pixels), but no higher than `area`, the part of a screen (screen coordinates) where
    /// it will be; an empty one sets no limit. The model outlives the panel.
    virtual std::unique_ptr<KeyPanel> makePanel(LauncherModel& model, const Rect& area) = 0;
};

/// The key that runs an action while nothing has been typed; "" when it has none.
std::string_view launcherLetter(SnapAction action);

class Launcher {
  public:
    /// All of them must outlive the launcher.
    Launcher(WindowEngine& engine, LauncherViews& views, Beep& beep,
             NotificationCenter& notifications);
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;

    /// Opens the launcher for the focused window, or closes it and brings the application back
    /// that was in front.
    void toggle();

    enum class Activation { none, previousApplication };

    /// Closes the panel, if it is open, and activates `app`, else the application that was in front
    /// when it opened.
    void close(Activation activation, std::optional<Pid> app = std::nullopt);

    bool isOpen() const { return panel_ != nullptr; }

    /// Deals with a key before the search field gets it.
    KeyVerdict handleKey(const KeyEvent& event);

    /// The model of the open panel, else null.
    LauncherModel* model() { return model_.get(); }

  private:
    /// False when there is no window that could be snapped, or snapping is paused.
    bool open();
    KeyVerdict runLetter(const KeyEvent& event);

    WindowEngine& engine_;
    LauncherViews& views_;
    Beep& beep_;
    NotificationCenter& notifications_;
    // The panel shows the model, so it has to go first.
    std::unique_ptr<LauncherModel> model_;
    std::unique_ptr<KeyPanel> panel_;
    Token keyMonitor_;
    Token resignObserver_;
    std::optional<Pid> previous_;
};

}  // namespace tessellon
