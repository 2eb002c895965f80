// Where a window goes within an area: pure geometry in the accessibility space, rounded outward to
// whole points.
#pragma once

#include "base/geometry.h"

namespace tessellon {

/// The part of `area` that `unit` names in fractions from its top left corner. Edges strictly
/// inside the area keep half of `gap` from it, so that two neighbours are exactly `gap` apart;
/// edges on the border of the area keep nothing.
Rect placeUnit(const Rect& unit, const Rect& area, double gap);

/// `area` less a margin on all four sides; the whole area when too little would be left of it.
Rect placeWithMargin(const Rect& area, double margin);

/// The middle of `area` in the size of `current`, or in that of the area where it is smaller.
Rect placeCentered(const Rect& current, const Rect& area);

/// The place in `to` that corresponds to that of `current` in `from`: the same share of the free
/// room on the left and above, the same size unless `to` is smaller; always inside `to`.
Rect placeInOtherArea(const Rect& current, const Rect& from, const Rect& to);

/// A unit rectangle made fit for use: inside 0…1, at least a twentieth of the area in each
/// direction, 0 where a number is not finite.
Rect clampedUnit(const Rect& unit);

}  // namespace tessellon
