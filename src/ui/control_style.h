// Measures that the painted controls share.
#pragma once

namespace tessellon::control_style {

/// The width of a control's outline, in logical pixels.
inline constexpr double outline = 1.5;

/// The same for what is small: chips, dots, pictures of controls.
inline constexpr double thinOutline = 1.2;

/// How opaque a control is that cannot be used.
inline constexpr double disabledOpacity = 0.45;

}  // namespace tessellon::control_style
