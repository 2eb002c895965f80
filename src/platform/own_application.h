// The port for this program as a whole, as the desktop sees it.
#pragma once

#include "base/geometry.h"

#include <optional>

namespace tessellon {

class OwnApplication {
  public:
    virtual ~OwnApplication() = default;

    /// The frame, decorations included, of the window of ours that has the keyboard, in screen
    /// coordinates; nothing while another program's window has it. Panels are not windows here.
    virtual std::optional<Rect> keyWindowFrame() const = 0;

    /// Ends the program once the current turn of the run loop is over; settings are saved.
    virtual void terminate() = 0;
};

}  // namespace tessellon
