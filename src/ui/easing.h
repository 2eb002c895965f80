// How motions that answer the user slow down.
#pragma once

#include <QEasingCurve>

namespace tessellon {

/// Fast at first, and slower towards the end.
QEasingCurve easeOut();

}  // namespace tessellon
