#include "platform/x11/edid.h"

#include "base/text.h"
#include "base/uuid.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tessellon::x11 {
namespace {

constexpr std::size_t blockSize = 128;
constexpr std::array<std::uint8_t, 8> header{0x00, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0x00};
constexpr std::size_t firstDescriptor = 54;
constexpr std::size_t descriptorSize = 18;
constexpr std::size_t descriptorCount = 4;
constexpr std::uint8_t nameDescriptor = 0xfc;
constexpr std::uint8_t serialDescriptor = 0xff;
constexpr std::size_t serialNumber = 12;
constexpr std::size_t serialNumberSize = 4;

/// The text of the first display descriptor of a kind.
std::string textIn(std::span<const std::uint8_t> edid, std::uint8_t kind) {
    for (std::size_t i = 0; i < descriptorCount; ++i) {
        const auto descriptor = edid.subspan(firstDescriptor + i * descriptorSize, descriptorSize);
        // Zero where a timing would have its pixel clock: a display descriptor.
        if (descriptor[0] == 0 && descriptor[1] == 0 && descriptor[3] == kind) {
            const auto text = descriptor.subspan(5);
            const auto end = std::find_if(text.begin(), text.end(),
                                          [](std::uint8_t c) { return c == '\n' || c == 0; });
            return sanitizedUtf8(trimWhitespace({reinterpret_cast<const char*>(text.data()),
                                                 static_cast<std::size_t>(end - text.begin())}));
        }
    }
    return {};
}

/// A number that is the same byte four times over is a way to say that there is none.
bool hasSerialNumber(std::span<const std::uint8_t> edid) {
    const auto number = edid.subspan(serialNumber, serialNumberSize);
    return std::any_of(number.begin(), number.end(),
                       [&](std::uint8_t byte) { return byte != number.front(); }) ||
           !textIn(edid, serialDescriptor).empty();
}

}  // namespace

std::optional<MonitorIdentity> monitorIdentity(std::span<const std::uint8_t> edid) {
    if (edid.size() < blockSize || !std::equal(header.begin(), header.end(), edid.begin())) {
        return std::nullopt;
    }
    const auto block = edid.first(blockSize);
    const auto id = Uuid::fromName({reinterpret_cast<const char*>(block.data()), block.size()});
    return MonitorIdentity{id.toString(), textIn(block, nameDescriptor), hasSerialNumber(block)};
}

}  // namespace tessellon::x11
