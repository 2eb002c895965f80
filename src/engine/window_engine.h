// The one object that moves windows. Shortcuts, drags, the launcher, the menu and arrangements all
// ask it, so it alone knows what happened last.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "engine/engine_services.h"
#include "engine/restore_memory.h"
#include "engine/screens.h"
#include "engine/snap_action.h"
#include "engine/window_access.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessellon {

/// What was done last and where the window ended up; a repeated shortcut goes on from here.
struct LastAction {
    SnapAction action;
    Rect frame;
    bool operator==(const LastAction&) const = default;
};

/// The last snap in the words of the user interface.
struct LastSnap {
    SnapAction action;
    /// The name of the window's application, or "Window".
    std::string app;
    /// The name of the display it went to, or "".
    std::string display;
    bool operator==(const LastSnap&) const = default;
};

/// A window that is moved together with others.
struct WindowMove {
    Element window;
    /// Where it stands now.
    Rect current;
    Rect target;
    bool operator==(const WindowMove&) const = default;
};

/// Frames are in the accessibility space. An action that cannot be carried out (paused, no window,
/// no screen, nothing to restore) silently changes nothing.
class WindowEngine {
  public:
    /// Loads the restore memory; the services must outlive the engine.
    explicit WindowEngine(const EngineServices& services);
    WindowEngine(const WindowEngine&) = delete;
    WindowEngine& operator=(const WindowEngine&) = delete;

    /// One look at the windows and one at the screens.
    using Reads = std::array<Token, 2>;
    /// While they live, all questions of one operation are answered from them. Must not outlive the
    /// engine.
    Reads beginReads() const;

    /// Moves the focused window; asking again for an action that has a cycle steps through its
    /// sizes.
    void snap(SnapAction action);

    /// Moves this window; never cycles.
    void snap(SnapAction action, const Element& window);

    /// Fills one display with the windows that are seen on it: the focused one takes the left part,
    /// the others share the right one in rows.
    void tile();

    /// Moves several windows, in order. Everything is written before anything is read back, so that
    /// their programs work at the same time. Each window can be restored like a snapped one, and
    /// the next shortcut starts a cycle anew.
    void moveAll(std::span<const WindowMove> moves);

    /// Where `action` puts a window that is at `current` now, or nothing.
    std::optional<Rect> targetFrame(SnapAction action, const Element& window, const Rect& current);

    const std::optional<LastAction>& last() const { return last_; }

    /// Makes the next shortcut start a cycle anew.
    void clearLast() { last_.reset(); }

    const std::optional<LastSnap>& lastSnap() const { return lastSnap_; }

    WindowAccess& windows() { return windows_; }
    const Screens& screens() const { return screens_; }
    RestoreMemory& memory() { return memory_; }
    const EngineServices& services() const { return services_; }

  private:
    void perform(SnapAction action, const Element& window, const Rect& current);
    SnapAction cycled(SnapAction action, const Rect& current) const;
    std::optional<Screen> screenToTile(const std::optional<Element>& focused) const;
    std::vector<VisibleWindow> windowsToTile(const Screen& screen,
                                             const std::optional<Element>& focused) const;

    EngineServices services_;
    WindowAccess windows_;
    Screens screens_;
    RestoreMemory memory_;
    std::optional<LastAction> last_;
    std::optional<LastSnap> lastSnap_;
};

}  // namespace tessellon
