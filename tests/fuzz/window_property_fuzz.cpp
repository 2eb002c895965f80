// Whatever a client stores in its window's properties, or a monitor says about itself, must be read
// without harm, and texts must come out as valid UTF-8.
#include "base/text.h"
#include "platform/x11/edid.h"
#include "platform/x11/properties.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    using namespace tessellon::x11;
    if (size < 2) {
        return 0;
    }
    constexpr xcb_atom_t utf8 = 300;
    const RawProperty property{data[0] % 2 == 0 ? XCB_ATOM_STRING : utf8,
                               static_cast<std::uint8_t>(8 << (data[1] % 3)),
                               std::span(data + 2, size - 2)};
    const auto names = windowClass(property);
    const auto monitor = monitorIdentity(property.bytes);
    if (!isValidUtf8(text(property)) || !isValidUtf8(names.instance) || !isValidUtf8(names.name) ||
        (monitor && !isValidUtf8(monitor->name))) {
        std::abort();
    }
    const auto half = property.bytes.size() / 2;
    strut({property.type, property.format, property.bytes.first(half)},
          {property.type, property.format, property.bytes.subspan(half)});
    const auto hints = sizeHints(property);
    if (hints.widthIncrement < 1 || hints.heightIncrement < 1 || hints.minWidth < 0) {
        std::abort();
    }
    extents(property);
    firstCardinal(property);
    return 0;
}
