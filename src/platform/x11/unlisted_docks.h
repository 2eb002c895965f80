// Finds the docks of a window manager that does not list them among the windows it manages, as they
// appear. For the window mirror.
#pragma once

#include "platform/x11/connection.h"

#include <functional>
#include <unordered_set>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class UnlistedDocks {
  public:
    explicit UnlistedDocks(const Connection& connection) : connection_(connection) {}

    /// Another window manager, or none: there may be docks already. Told whatever it lists.
    void windowManagerChanged() { looksEverywhere_ = true; }

    /// A window that is not in the picture was shown, or put into another one.
    void appeared(xcb_window_t window) { candidates_.insert(window); }
    /// A window has died.
    void gone(xcb_window_t window) { candidates_.erase(window); }
    /// None of them would be unlisted.
    void clear() { candidates_.clear(); }

    bool hasCandidates() const { return !candidates_.empty(); }

    /// The docks among the candidates, which are none any more, less those that are known. At most
    /// one round trip, and a few more after another window manager has come.
    std::vector<xcb_window_t> take(const std::function<bool(xcb_window_t)>& isKnown);

  private:
    const Connection& connection_;
    std::unordered_set<xcb_window_t> candidates_;
    bool looksEverywhere_ = false;
};

}  // namespace tessellon::x11
