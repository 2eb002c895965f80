// Whatever a monitor says about itself.
#include "base/text.h"
#include "base/uuid.h"
#include "fuzz/expect.h"
#include "platform/x11/edid.h"

#include <cstddef>
#include <cstdint>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    if (const auto monitor = x11::monitorIdentity(std::span(data, size))) {
        expect(isValidUtf8(monitor->name));
        expect(Uuid::parse(monitor->uuid).has_value());
    }
    return 0;
}
