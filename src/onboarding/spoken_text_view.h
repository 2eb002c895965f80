// Texts with key signs in them, for assistive technology.
#pragma once

#include <QString>

namespace tessellon {

/// The text with every sign of a key replaced by the key's name on this desktop: "Press ⌃⌥← to snap
/// left" is "Press Control Alt Left Arrow to snap left".
QString spokenText(const QString& text);

}  // namespace tessellon
