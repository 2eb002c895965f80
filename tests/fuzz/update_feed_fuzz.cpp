// Any bytes as an update feed, from the web and from a file: what is taken keeps to its limits.
#include "base/text.h"
#include "fuzz/expect.h"
#include "updates/update_feed.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    for (const auto* address : {"https://example.org/feed", "file:///feed"}) {
        const auto update = parseUpdateFeed(std::span(data, size), address);
        if (!update) {
            continue;
        }
        const bool isFile = std::string_view(address).starts_with("file:");
        expect(update->page.starts_with("https://") ||
               (isFile && update->page.starts_with("file:///")));
        expect(update->page.find_first_of(" \n\"\\") == std::string::npos);
        expect(update->notes.size() <= 8192 && plainText(update->notes) == update->notes);
        expect(Version::parse(update->version.text()) == update->version);
    }
    return 0;
}
