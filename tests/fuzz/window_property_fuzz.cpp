// Whatever a client stores in its window's properties must be read without harm: texts come out as
// valid UTF-8, sizes can be used, and no dock takes a whole monitor away.
#include "base/text.h"
#include "fuzz/expect.h"
#include "fuzz/stored_property.h"
#include "platform/x11/properties.h"
#include "platform/x11/x11_displays.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace tessellon;
using namespace tessellon::x11;

constexpr Rect root{0, 0, 3200, 1080};
constexpr Rect monitor{0, 0, 1920, 1080};

void readTexts(const RawProperty& property) {
    expect(isValidUtf8(text(property)));
    const auto names = windowClass(property);
    expect(isValidUtf8(names.instance) && isValidUtf8(names.name));
    expect(names.instance.find('\0') == std::string::npos &&
           names.name.find('\0') == std::string::npos);
}

void readNumbers(const RawProperty& property) {
    const auto hints = sizeHints(property);
    constexpr auto largest = std::numeric_limits<std::int16_t>::max();
    expect(hints.widthIncrement >= 1 && hints.widthIncrement <= largest);
    expect(hints.heightIncrement >= 1 && hints.heightIncrement <= largest);
    expect(hints.minWidth >= 0 && hints.minWidth <= largest);
    expect(hints.minHeight >= 0 && hints.minHeight <= largest);
    if (const auto edges = extents(property)) {
        for (const auto edge : {edges->left, edges->right, edges->top, edges->bottom}) {
            expect(edge >= 0 && edge <= largest);
        }
    }
    const auto values = cardinals(property);
    expect(firstCardinal(property).has_value() == !values.empty());
    expect(values.size() * sizeof values.front() <= property.bytes.size());
}

/// Docks of a client somewhere on the desktop, or on no display at all.
void readStruts(FuzzedDataProvider& input) {
    std::array<ClientWindow, 2> docks;
    std::vector<const ClientWindow*> windows;
    for (auto& dock : docks) {
        const StoredProperty partial(input);
        const StoredProperty plain(input);
        dock.strut = strut(partial.raw(), plain.raw());
        dock.client.x = input.ConsumeIntegral<std::int16_t>();
        dock.client.y = input.ConsumeIntegral<std::int16_t>();
        dock.client.width = 1.0 + input.ConsumeIntegral<std::uint16_t>();
        dock.client.height = 1.0 + input.ConsumeIntegral<std::uint16_t>();
        windows.push_back(&dock);
    }
    const auto area = visibleArea(monitor, root, windows, std::nullopt);
    expect(!area.isEmpty() && area.intersection(monitor) == area);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const StoredProperty property(input);
    readTexts(property.raw());
    readNumbers(property.raw());
    readStruts(input);
    return 0;
}
