// Any bytes as an entry that the desktop starts at login, and as the path of the program that our
// own entry names.
#include "fuzz/expect.h"
#include "platform/linux/autostart_file.h"
#include "platform/linux/desktop_entry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static_cast<void>(parseAutostartFile(text, {"XFCE"}));
    // What we write as a command starts that program, however it is called. Percent signs are for
    // the desktop to resolve.
    const auto path = "/" + std::string(text);
    if (path.find_first_of(std::string_view("%\0", 2)) == std::string::npos &&
        !path.ends_with("/env")) {
        expect(execProgram(execValue(path)) == path);
    }
    return 0;
}
