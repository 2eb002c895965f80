// The window-list port on X11: the children of the root in stacking order, each mapped to its
// client. The list that window managers publish is wrong on some of them.
#pragma once

#include "platform/window_list.h"
#include "platform/x11/window_mirror.h"

namespace tessellon::x11 {

class X11WindowList : public WindowList {
  public:
    explicit X11WindowList(WindowMirror& mirror) : mirror_(mirror) {}

    std::optional<std::vector<WindowListEntry>> onScreenWindows() const override;

  private:
    WindowMirror& mirror_;
};

}  // namespace tessellon::x11
