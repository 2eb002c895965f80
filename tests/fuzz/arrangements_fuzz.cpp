// Any bytes as stored arrangements.
#include "arrangements/arrangement_json.h"
#include "fuzz/round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessellon::expectRoundTrip(std::span(data, size), tessellon::decodeArrangements,
                               tessellon::encodeArrangements);
    return 0;
}
