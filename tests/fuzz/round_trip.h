// What every stored form must keep to, for the fuzz targets that read one.
#pragma once

#include "fuzz/expect.h"

namespace tessellon {

/// Whatever can be read can be written, and reads back as the same value.
template <typename Bytes, typename Decode, typename Encode>
void expectRoundTrip(const Bytes& bytes, Decode decode, Encode encode) {
    const auto value = decode(bytes);
    if (!value) {
        return;
    }
    const auto written = encode(*value);
    expect(written && decode(*written) == value && encode(*decode(*written)) == written);
}

}  // namespace tessellon
