// The kinds that clients' windows are taken for.
#include "platform/x11/window_kind.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::x11 {
namespace {

xcb_atom_t atom(Atom name) {
    return 100 + static_cast<xcb_atom_t>(name);
}

/// A list of types and transience as a client stores them.
class WindowKindTest : public ::testing::Test {
  protected:
    WindowKind kind(const std::vector<std::uint32_t>& types, std::uint32_t transientFor = 0,
                    std::uint8_t format = 32) {
        std::vector<std::uint8_t> bytes(types.size() * 4);
        if (!types.empty()) {  // an empty list may have no memory to copy from
            std::memcpy(bytes.data(), types.data(), bytes.size());
        }
        std::array<std::uint8_t, 4> window{};
        std::memcpy(window.data(), &transientFor, window.size());
        return windowKind({XCB_ATOM_ATOM, format, bytes}, {XCB_ATOM_WINDOW, 32, window}, atom);
    }

    static constexpr std::uint32_t otherWindow = 0x400001;
    static constexpr std::uint32_t unknownType = 99;
};

TEST_F(WindowKindTest, theFirstTypeThatIsKnownCounts) {
    const auto normal = atom(Atom::netWmWindowTypeNormal);
    const auto dock = atom(Atom::netWmWindowTypeDock);
    EXPECT_EQ(kind({dock, normal}), WindowKind::dock);
    EXPECT_EQ(kind({unknownType, 0, normal, dock}), WindowKind::standard);
    EXPECT_EQ(kind({normal}, otherWindow), WindowKind::standard);
    EXPECT_EQ(kind({atom(Atom::netWmWindowTypeUtility)}), WindowKind::floating);
    EXPECT_EQ(kind({atom(Atom::netWmWindowTypeTooltip)}), WindowKind::passing);
    EXPECT_EQ(kind({atom(Atom::netWmWindowTypeSplash)}), WindowKind::splash);
    EXPECT_EQ(kind({atom(Atom::netWmWindowTypeDesktop)}), WindowKind::desktop);
}

TEST_F(WindowKindTest, aTransientWindowWithoutATypeIsADialog) {
    const auto dock = atom(Atom::netWmWindowTypeDock);
    EXPECT_EQ(kind({}, otherWindow), WindowKind::dialog);
    EXPECT_EQ(kind({unknownType}, otherWindow), WindowKind::dialog);
    EXPECT_EQ(kind({dock}, otherWindow, 16), WindowKind::dialog) << "no list of types";
    EXPECT_EQ(kind({}), WindowKind::standard);
}

}  // namespace
}  // namespace tessellon::x11
