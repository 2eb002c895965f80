// Whatever a client stores as the type of its window, the first type that is known tells the kind.
#include "fuzz/expect.h"
#include "fuzz/stored_property.h"
#include "platform/x11/window_kind.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace tessellon;
using namespace tessellon::x11;

// The types have numbers of their own here, which examples and dictionary are written with.
constexpr xcb_atom_t firstType = 0x41;

xcb_atom_t atom(Atom name) {
    return firstType + static_cast<xcb_atom_t>(name) -
           static_cast<xcb_atom_t>(Atom::netWmWindowTypeNormal);
}

bool isKnown(std::uint32_t type) {
    return type >= firstType && type <= atom(Atom::netWmWindowTypeDesktop);
}

/// Type for type: one that is known decides, whatever follows, and one that is not changes nothing.
void expectTheFirstKnownTypeCounts(const RawProperty& types, const RawProperty& transientFor) {
    constexpr std::size_t size = sizeof(std::uint32_t);
    const auto kindOf = [&](std::span<const std::uint8_t> bytes) {
        return windowKind({types.type, types.format, bytes}, transientFor, atom);
    };
    auto rest = types.bytes;
    for (int i = 0; i < 8 && rest.size() >= size; ++i) {
        std::uint32_t first = 0;
        std::memcpy(&first, rest.data(), size);
        const auto others = rest.subspan(size);
        expect(kindOf(rest) == kindOf(isKnown(first) ? rest.first(size) : others));
        rest = others;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const StoredProperty types(input);
    const StoredProperty transientFor(input);
    const bool isTransient = firstCardinal(transientFor.raw()).value_or(0) != 0;
    const auto untyped = isTransient ? WindowKind::dialog : WindowKind::standard;
    expect(windowKind({}, transientFor.raw(), atom) == untyped);
    if (types.raw().format == 32) {
        expectTheFirstKnownTypeCounts(types.raw(), transientFor.raw());
    } else {
        expect(windowKind(types.raw(), transientFor.raw(), atom) == untyped);
    }
    return 0;
}
