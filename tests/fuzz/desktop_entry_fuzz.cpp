// Feeds bytes to the reader of desktop files, and as the value of an Exec key to its splitter.
#include "platform/linux/desktop_entry.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto entry = tessellon::parseDesktopEntry(text)) {
        static_cast<void>(tessellon::isShown(*entry, {"XFCE", "KDE"}));
    }
    static_cast<void>(tessellon::isGenericLauncher(tessellon::execProgram(text)));
    return 0;
}
