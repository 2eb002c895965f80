// Properties of windows, for the fuzz targets that read them.
#pragma once

#include "platform/x11/properties.h"

#include <cstdint>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>
#include <xcb/xcb.h>

namespace tessellon {

/// A property as a hostile client would store it. The bytes live as long as the property does.
class StoredProperty {
  public:
    explicit StoredProperty(FuzzedDataProvider& input)
        : type_(input.PickValueInArray<xcb_atom_t>(
              {XCB_ATOM_NONE, XCB_ATOM_STRING, utf8, XCB_ATOM_CARDINAL})),
          format_(input.PickValueInArray<std::uint8_t>({8, 16, 32})) {
        const auto text = input.ConsumeRandomLengthString();
        bytes_.assign(text.begin(), text.end());
    }

    x11::RawProperty raw() const { return {type_, format_, bytes_}; }

  private:
    static constexpr xcb_atom_t utf8 = 300;

    xcb_atom_t type_;
    std::uint8_t format_;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace tessellon
