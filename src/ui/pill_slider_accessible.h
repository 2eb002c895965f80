// What assistive technology sees of a PillSlider.
#pragma once

namespace tessellon {

/// Makes Qt present every PillSlider as a slider with a value that can be set. Harmless when called
/// again.
void installPillSliderAccessibility();

}  // namespace tessellon
