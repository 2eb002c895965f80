// Any bytes as an entry that the desktop starts at login.
#include "platform/linux/autostart_file.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static_cast<void>(tessellon::parseAutostartFile(text, {"XFCE"}));
    return 0;
}
