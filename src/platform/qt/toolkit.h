// Sets up the toolkit before its first use, so that the interface looks the same on every desktop
// and the toolkit says nothing on its own.
#pragma once

#include <functional>

namespace tessellon {

/// To be called before the application object is made. The toolkit then uses the X11 display (also
/// where the session would have it use another one), leaves the desktop's theme alone, stays when
/// its last window is closed, and its warnings go where ours go.
///
/// `displayLost` is called when the toolkit finds its connection to the display broken; it ends the
/// process right after that.
void prepareToolkit(std::function<void()> displayLost);

}  // namespace tessellon
