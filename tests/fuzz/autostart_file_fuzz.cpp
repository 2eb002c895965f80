// Any bytes as an entry that the desktop starts at login, and as the path of the program that our
// own entry names.
#include "fuzz/expect.h"
#include "platform/linux/autostart_file.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static_cast<void>(parseAutostartFile(text, {"XFCE"}));

    const std::filesystem::path program("/" + std::string(text));
    // Of a program called env the next word would be the one that is started.
    if (canBeInAutostartFile(program) && program.filename() != "env") {
        const auto ours = parseAutostartFile(autostartText(program, AutostartPurpose::start), {});
        expect(ours && ours->isOn && !ours->isOurRemoval);
        // Percent signs are for the desktop to resolve.
        expect(ours->program == program || text.find('%') != std::string_view::npos);
        const auto none = parseAutostartFile(autostartText(program, AutostartPurpose::removal), {});
        expect(none && !none->isOn && none->isOurRemoval);
    }
    return 0;
}
