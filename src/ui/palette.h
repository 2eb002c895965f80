// The colours of everything the program draws: fixed sRGB values at full opacity.
#pragma once

#include "engine/snap_action.h"

#include <QColor>

namespace tessellon::palette {

inline constexpr QColor teal{34, 199, 184};         // the accent, "on", the halves
inline constexpr QColor amber{255, 200, 61};        // primary buttons, the quarters
inline constexpr QColor coral{255, 111, 94};        // warnings and errors, paused
inline constexpr QColor pink{255, 158, 196};        // the thirds
inline constexpr QColor lavender{155, 140, 255};    // the other actions, beta and waiting states
inline constexpr QColor ink{43, 29, 20};            // text and outlines
inline constexpr QColor muted{122, 103, 88};        // secondary text
inline constexpr QColor line{235, 220, 198};        // separators, "off", quiet outlines
inline constexpr QColor cream{255, 244, 226};       // quiet cards
inline constexpr QColor paper{255, 252, 247};       // cards and buttons
inline constexpr QColor background{250, 235, 213};  // windows
inline constexpr QColor white{255, 255, 255};       // knobs

/// The colour of the section in which the action is listed.
QColor groupColor(SnapAction action);

/// The same colour at `opacity` (0…1) of its own opacity.
QColor withOpacity(const QColor& color, double opacity);

}  // namespace tessellon::palette
