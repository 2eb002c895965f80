// The look at the desktop that the program starts from.
#pragma once

#include "base/token.h"
#include "platform/types.h"
#include "platform/x11/connection.h"
#include "platform/x11/window_mirror.h"

namespace tessellon::x11 {

/// Looks at a desktop that is whole: a window manager that is just starting announces itself before
/// it has taken over the windows that are there, so it is given until `timeout` to do so. The look
/// lasts as long as the token.
Token firstLook(Connection& connection, WindowMirror& mirror, Seconds timeout);

}  // namespace tessellon::x11
