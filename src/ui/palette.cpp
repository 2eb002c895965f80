#include "ui/palette.h"

namespace tessellon::palette {

QColor groupColor(SnapAction action) {
    switch (group(action)) {
        case SnapActionGroup::halves:
            return teal;
        case SnapActionGroup::quarters:
            return amber;
        case SnapActionGroup::thirds:
            return pink;
        case SnapActionGroup::others:
            break;
    }
    return lavender;
}

QColor withOpacity(const QColor& color, double opacity) {
    QColor result = color;
    result.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return result;
}

}  // namespace tessellon::palette
