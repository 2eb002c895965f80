// Feeds bytes to the reader of the settings file. What it accepts must survive being written and
// read again, or a rewrite would lose settings.
#include "fuzz/expect.h"
#include "platform/linux/property_list.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace tessellon;

/// The file after every entry has been changed to the value that it has.
std::string rewritten(plist_t tree) {
    for (const auto& [key, value] : propertyDictionary(tree)) {
        setPropertyNode(tree, key, &value);
    }
    return propertyListXml(tree);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto tree =
        parsePropertyList(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!tree) {
        return 0;
    }
    const auto values = propertyDictionary(tree.get());
    const auto xml = propertyListXml(tree.get());
    const auto again = parsePropertyList(xml);
    expect(again && propertyListXml(again.get()) == xml &&
           propertyDictionary(again.get()).size() == values.size());
    // The first time, keys that were no text become one, by which they are sorted from then on.
    const auto changed = parsePropertyList(rewritten(tree.get()));
    expect(changed != nullptr);
    const auto sorted = rewritten(changed.get());
    const auto reread = parsePropertyList(sorted);
    expect(reread && rewritten(reread.get()) == sorted);
    return 0;
}
