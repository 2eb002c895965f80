// A picture of all clients' windows, kept up to date by events: what changed is marked, and only
// that is read again when somebody looks.
#pragma once

#include "base/token.h"
#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"
#include "platform/x11/unlisted_docks.h"
#include "platform/x11/window_manager_habits.h"
#include "platform/x11/window_reader.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class WindowMirror {
  public:
    /// Starts listening; reads nothing before somebody looks.
    explicit WindowMirror(Connection& connection);
    WindowMirror(const WindowMirror&) = delete;
    WindowMirror& operator=(const WindowMirror&) = delete;

    /// While the token lives, look() asks the server once at most.
    Token beginReads();

    /// Brings the picture up to date with everything the server has done so far, or up to the press
    /// of a key that is being told. One round trip as a rule, none for such a press when nothing
    /// has changed. Pointers into the mirror are good until the next look or refresh.
    void look();

    /// Reads again what the events pulled so far have marked; no round trip when that is nothing.
    void refresh();

    bool isReading() const { return depth_ > 0; }

    /// A window manager that speaks EWMH is alive: the window that it names exists and names
    /// itself.
    bool windowManagerAlive() const { return windowManagerAlive_; }
    /// What it does otherwise than others; nothing in particular while none is alive.
    const WindowManagerHabits& habits() const { return habits_; }

    /// Changes whenever a window manager comes, goes, or is replaced.
    std::uint64_t windowManagerRevision() const { return windowManagerRevision_; }
    /// Events have said that there may be another window manager; refresh() tells.
    bool windowManagerIsInDoubt() const;

    /// The window, managed or not; null when it is gone.
    const ClientWindow* find(xcb_window_t id) const;
    /// The same, but null also when the id meanwhile belongs to another window.
    const ClientWindow* find(xcb_window_t id, std::uint64_t generation) const;

    /// The client whose top-level ancestor (or itself) is this child of the root, of several the
    /// one that is seen; null for windows of the window manager itself, menus and the like.
    const ClientWindow* findByTopLevel(xcb_window_t topLevel) const;

    /// Managed windows, in the order they appeared.
    const std::vector<const ClientWindow*>& managed() const { return managed_; }

    /// Windows that keep room at the edges of the screen for themselves. Some window managers do
    /// not list them among those they manage.
    std::vector<const ClientWindow*> reservingRoom() const;

    /// Managed windows, front-most first.
    const std::vector<const ClientWindow*>& stacking() const { return stacking_; }

    /// What _NET_ACTIVE_WINDOW names, if that is a managed window.
    const ClientWindow* activeWindow() const;

    /// Whether the picture of the window's frame is as of the events pulled so far.
    bool knowsFrame(const ClientWindow& window) const;

    /// Whether the window belongs to what is shown now: the current desktop, or all of them.
    bool isOnCurrentDesktop(const ClientWindow& window) const;

    /// _NET_WORKAREA of the current desktop, in root coordinates.
    std::optional<Rect> workArea() const { return workArea_; }

    /// Changes whenever a window comes, goes, or changes its process, class or application id.
    std::uint64_t identityRevision() const { return identityRevision_; }

    /// How often the shadow of the window was announced anew; to wait for the next one.
    std::uint64_t shadowChanges(xcb_window_t id) const;

  private:
    struct Tracked {
        ClientWindow window;
        std::uint32_t dirty = facet::all;
        std::uint64_t shadowChanges = 0;
    };
    struct RootCookies;

    /// Events have told of something that was not read again yet.
    bool isMarked() const {
        return dirtyRoot_ != 0 || !dirtyWindows_.empty() || docks_.hasCandidates();
    }

    void onEvent(const xcb_generic_event_t& event);
    void mappingChanged(xcb_window_t window);
    void appeared(xcb_window_t window);
    void onProperty(const xcb_property_notify_event_t& event);
    void mark(xcb_window_t id, std::uint32_t facets);
    void markByTopLevel(xcb_window_t id, std::uint32_t facets);
    void forget(xcb_window_t id);
    void adopt(xcb_window_t id);

    RootCookies sendRootRequests(std::uint32_t parts) const;
    void collectRoot(const RootCookies& cookies, std::uint32_t parts);
    void readWindowManager(xcb_window_t candidate);
    void updateMembership(const std::vector<xcb_window_t>& clients);
    void adoptUnlistedDocks();
    void readChanges();
    void rebuildLists();

    Connection& connection_;
    WindowReader reader_;
    std::unordered_map<xcb_window_t, Tracked> windows_;
    std::unordered_multimap<xcb_window_t, xcb_window_t> clientsOfTopLevel_;  // tabs share one
    std::unordered_set<xcb_window_t> dirtyWindows_;
    UnlistedDocks docks_;
    std::vector<xcb_window_t> rootChildren_;  // bottom first
    std::vector<const ClientWindow*> managed_;
    std::vector<const ClientWindow*> stacking_;
    std::uint32_t dirtyRoot_;
    bool listsDirty_ = true;
    xcb_window_t checkWindow_ = XCB_WINDOW_NONE;  // what _NET_SUPPORTING_WM_CHECK names
    bool windowManagerAlive_ = false;
    WindowManagerHabits habits_;
    std::uint64_t windowManagerRevision_ = 0;
    xcb_window_t active_ = XCB_WINDOW_NONE;
    std::uint32_t currentDesktop_ = 0;
    std::optional<Rect> workArea_;
    std::uint64_t nextGeneration_ = 1;
    std::uint64_t identityRevision_ = 0;
    int depth_ = 0;
    std::optional<std::uint64_t> lookedAtPress_;
    bool fresh_ = false;
    Token listener_;
};

}  // namespace tessellon::x11
