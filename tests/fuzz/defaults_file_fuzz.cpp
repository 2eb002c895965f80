// Feeds bytes to the reader of the settings file. What it accepts must survive being written and
// read again, or a rewrite would lose settings.
#include "fuzz/expect.h"
#include "platform/linux/property_list.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
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
    return 0;
}
