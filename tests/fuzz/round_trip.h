// What every stored form must keep to, for the fuzz targets that read one.
#pragma once

#include <cstdlib>

namespace tessellon {

/// Whatever can be read can be written, and reads back as the same value; anything else ends the
/// process.
template <typename Bytes, typename Decode, typename Encode>
void expectRoundTrip(const Bytes& bytes, Decode decode, Encode encode) {
    const auto value = decode(bytes);
    if (!value) {
        return;
    }
    const auto written = encode(*value);
    if (!written || decode(*written) != value || encode(*decode(*written)) != written) {
        std::abort();
    }
}

}  // namespace tessellon
