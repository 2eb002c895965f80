// A desktop with very many windows.
#pragma once

#include "harness/private_desktop.h"

#include <cstddef>

namespace tessellon::benchmarks {

/// Has a few programs show this many windows altogether, which must be a multiple of five, and
/// waits until the window manager has them. Throws when they do not appear.
void openCrowd(desktop::PrivateDesktop& desktop, std::size_t count);

}  // namespace tessellon::benchmarks
