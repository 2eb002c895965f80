// Feeds bytes to the reader of desktop files, and as the value of an Exec key to its splitter.
#include "base/text.h"
#include "fuzz/expect.h"
#include "platform/linux/desktop_entry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    setenv("LANGUAGE", "de_AT:de", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto entry = parseDesktopEntry(text)) {
        expect(isValidUtf8(entry->name) && isValidUtf8(entry->plainName) &&
               isValidUtf8(entry->icon) && isValidUtf8(entry->startupWmClass));
        expect(entry->execWords >= (entry->program.empty() ? 0 : 1));
        expect(!isGenericLauncher(entry->program) && !isGenericLauncher(entry->tryProgram));
        expect(!isShown(*entry, {"XFCE", "KDE"}) || !entry->name.empty());
    }
    static_cast<void>(isGenericLauncher(execProgram(text)));
    return 0;
}
