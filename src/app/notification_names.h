// The names under which the parts of the program tell each other what happened.
#pragma once

#include <string_view>

namespace tessellon::notification {

/// Switch the open settings window to a page; the object is the page.
inline constexpr std::string_view settingsSelect = "TessellonSettingsSelect";
/// Open the welcome tour; no object.
inline constexpr std::string_view showTour = "Tessellon.showTour";
/// Something the welcome tour waits for happened; the object is a std::string: "shortcut", "drag"
/// or "launcher".
inline constexpr std::string_view tourEvent = "Tessellon.tourEvent";
/// The global hot keys were registered anew; no object.
inline constexpr std::string_view hotkeysChanged = "TessellonHotkeysChanged";
/// The list of arrangements was saved; no object.
inline constexpr std::string_view arrangementsChanged = "TessellonArrangementsChanged";

}  // namespace tessellon::notification
