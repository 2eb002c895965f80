// The names of the actions where there is little room.
#pragma once

#include "engine/snap_action.h"

#include <string>

namespace tessellon {

/// The title with only its first character in upper case, such as "Left two thirds".
std::string sentenceTitle(SnapAction action);

/// For tiles and zones: "Left ⅔", "Top", "Almost max"; the sentence title where there is no shorter
/// one.
std::string shortTitle(SnapAction action);

}  // namespace tessellon
