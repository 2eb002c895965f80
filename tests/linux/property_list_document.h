// Property lists as text.
#pragma once

#include <string>

namespace tessellon {

/// A whole list in the XML form around a value.
inline std::string propertyListDocument(const std::string& value) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + value +
           "</plist>";
}

}  // namespace tessellon
