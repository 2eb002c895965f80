// Which desktop the user is logged in to.
#pragma once

#include <string>
#include <vector>

namespace tessellon {

/// The names of the desktop that runs, the most specific first, as $XDG_CURRENT_DESKTOP lists them;
/// none under a bare window manager.
std::vector<std::string> currentDesktops();

}  // namespace tessellon
