// The frames that windows had when the left button went down. For the accessibility port.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/x11/client_window.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// Taken from the mirror's picture when the press is pulled, before anything that came of it. Only
/// windows whose frame the mirror did not know then are read when the press is told.
class FramesAtPress {
  public:
    /// Both must outlive this object.
    FramesAtPress(WindowMirror& mirror, const RawInput& input);
    FramesAtPress(const FramesAtPress&) = delete;
    FramesAtPress& operator=(const FramesAtPress&) = delete;

    /// Nothing when it is not known, or the window is another one than then.
    std::optional<Rect> of(const ClientWindow& window) const;

    /// The window is moved by somebody else than the hand.
    void forget(xcb_window_t window) { frames_.erase(window); }
    /// The button is up.
    void clear() { frames_.clear(); }

  private:
    struct Known {
        std::uint64_t generation;
        Rect frame;
    };

    void add();

    WindowMirror& mirror_;
    std::unordered_map<xcb_window_t, Known> frames_;
    Token pulled_;
    Token told_;
};

}  // namespace tessellon::x11
