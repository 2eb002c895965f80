// Any bytes as stored shortcuts.
#include "fuzz/round_trip.h"
#include "shortcuts/keymap_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessellon::expectRoundTrip(std::span(data, size), tessellon::decodeKeymap,
                               tessellon::encodeKeymap);
    return 0;
}
