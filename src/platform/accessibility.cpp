#include "platform/accessibility.h"

namespace tessellon {

std::string_view attributeName(Attribute attribute) {
    switch (attribute) {
        case Attribute::focusedWindow:
            return "AXFocusedWindow";
        case Attribute::windows:
            return "AXWindows";
        case Attribute::position:
            return "AXPosition";
        case Attribute::size:
            return "AXSize";
        case Attribute::title:
            return "AXTitle";
        case Attribute::role:
            return "AXRole";
        case Attribute::subrole:
            return "AXSubrole";
        case Attribute::fullScreen:
            return "AXFullScreen";
        case Attribute::minimized:
            return "AXMinimized";
        case Attribute::window:
            return "AXWindow";
        case Attribute::parent:
            return "AXParent";
        case Attribute::enhancedUserInterface:
            return "AXEnhancedUserInterface";
    }
    return "";
}

}  // namespace tessellon
