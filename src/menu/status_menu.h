// The status item and the panel it opens: when it opens and where, what closes it, and what its
// controls do to the window that was in front.
#pragma once

#include "arrangements/arrangement_store.h"
#include "base/token.h"
#include "engine/window_engine.h"
#include "menu/menu_model.h"
#include "menu/menu_placement.h"
#include "platform/accessibility.h"
#include "platform/applications.h"
#include "platform/beep.h"
#include "platform/event_monitors.h"
#include "platform/key_event.h"
#include "platform/own_application.h"
#include "platform/panel.h"
#include "platform/run_loop.h"
#include "platform/status_item.h"
#include "platform/types.h"
#include "platform/updater.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tessellon {

/// Where the panel of the status item comes from.
class MenuViews {
  public:
    virtual ~MenuViews() = default;

    /// A panel that shows the model and is as large as that needs (the size of its frame, in
    /// device pixels), but no higher than `area`, the part of a screen (screen coordinates) where
    /// it will be; an empty one sets no limit. The model outlives the panel. Null when there can
    /// be no panel.
    virtual std::unique_ptr<KeyPanel> makePanel(MenuModel& model, const Rect& area) = 0;
};

class StatusMenu {
  public:
    /// All of them must outlive the menu.
    struct Services {
        WindowEngine& engine;
        ArrangementStore& arrangements;
        StatusItem& item;
        MenuViews& views;
        Updater& updater;
        OwnApplication& application;
        Beep& beep;
        RunLoop& runLoop;
    };

    /// Pressing the item toggles the panel from now on.
    StatusMenu(const Services& services, std::function<void()> openSettings);
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;

    /// Closes the panel when it is open; else opens it, unless it was closed within the last 0.3
    /// seconds: the press that closed it from outside was this one then. A button that was down
    /// when it was closed counts as closing it until the button is up.
    void toggle();

    /// Opens the panel for the window in front, below the item where its place is known, else at
    /// the pointer; above where there is no room below. Nothing when it is open, or when the views
    /// have no panel.
    void show();

    /// Nothing when it is closed.
    void close();

    bool isOpen() const { return panel_ != nullptr; }

    /// The model of the open panel, else null.
    MenuModel* model() { return model_.get(); }

  private:
    /// What was in front when the panel opened.
    struct Target {
        std::optional<RunningApplication> application;
        std::optional<Element> window;
    };

    Target findTarget() const;
    MenuAnchor findAnchor() const;
    void watch();
    void setCallbacks(const std::optional<Element>& window);
    /// The effect must not be part of the model, which closing destroys.
    void closeThen(const std::function<void()>& effect);
    void onMouseDown();
    KeyVerdict onKey(const KeyEvent& event);
    void saveArrangement();
    void awaitRelease();

    Services services_;
    std::function<void()> openSettings_;
    // The panel shows the model, so it has to go first.
    std::unique_ptr<MenuModel> model_;
    std::unique_ptr<KeyPanel> panel_;
    std::vector<Token> monitors_;
    Token resignObserver_;
    Token pressed_;
    /// Uptime; nothing while it was never closed.
    std::optional<Seconds> closedAt_;
    Token release_;
};

}  // namespace tessellon
