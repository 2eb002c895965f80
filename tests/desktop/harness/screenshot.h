// Pictures of a private desktop, for the people who look at what a test or the demo did.
#pragma once

#include "harness/x_session.h"

#include <filesystem>

namespace tessellon::desktop {

/// Saves the whole screen as a PNG file. False when it cannot be read or written.
bool saveScreenshot(XSession& session, const std::filesystem::path& path);

}  // namespace tessellon::desktop
