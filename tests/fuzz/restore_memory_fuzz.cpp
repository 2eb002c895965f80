// Any bytes as stored restore records.
#include "engine/restore_memory_json.h"
#include "fuzz/round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessellon::expectRoundTrip(std::span(data, size), tessellon::decodeMemories,
                               tessellon::encodeMemories);
    return 0;
}
