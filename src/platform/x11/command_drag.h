// Moves windows whose title bar is pressed while the command key is down already, on the window
// managers that take such a press for nothing of theirs and would let the window lie.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/x11/connection.h"
#include "platform/x11/fence.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"

#include <cstdint>
#include <functional>
#include <optional>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// Only watches: every press reaches whoever it is for. When the pointer is dragged on and the
/// window manager, once it has seen that, still has not reacted, it is asked to begin the move.
class CommandDrag {
  public:
    /// All of them must outlive this object. `wanted` is asked at every such press.
    CommandDrag(Connection& connection, WindowMirror& mirror, RawInput& input,
                std::function<bool()> wanted);
    CommandDrag(const CommandDrag&) = delete;
    CommandDrag& operator=(const CommandDrag&) = delete;

  private:
    enum class Stage {
        still,    // the pointer has not been dragged far enough
        waiting,  // for what the window manager makes of the drag by itself
        begun     // the window manager was asked for a move
    };

    struct Press {
        xcb_window_t window;
        std::uint64_t generation;
        Point at;    // of the root
        Rect frame;  // of the window, then
        Stage stage = Stage::still;
        int requests = 0;
    };

    void onPressed(std::uint32_t button);
    void onMotion();
    void onIdle();
    bool asksOnceMore() const;
    void giveUp();
    void onReleased();
    bool onlyCommandIsDown() const;
    const ClientWindow* pressedWindow() const;
    void tellWindowManager(std::uint32_t what) const;

    Connection& connection_;
    WindowMirror& mirror_;
    RawInput& input_;
    std::function<bool()> wanted_;
    Fence fence_;
    std::optional<Press> press_;
    Token pressed_;
    Token motion_;
    Token idle_;
    Token released_;
};

}  // namespace tessellon::x11
