// What clients store in their windows' properties, and what they should not.
#include "platform/x11/properties.h"

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::x11 {
namespace {

constexpr xcb_atom_t utf8 = 300;

class Words {
  public:
    explicit Words(std::vector<std::uint32_t> values) : bytes_(values.size() * 4) {
        std::memcpy(bytes_.data(), values.data(), bytes_.size());
    }
    RawProperty property(std::uint8_t format = 32) const {
        return {XCB_ATOM_CARDINAL, format, bytes_};
    }

  private:
    std::vector<std::uint8_t> bytes_;
};

RawProperty textProperty(std::string_view text, xcb_atom_t type = utf8) {
    return {type, 8, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}};
}

TEST(Properties, ExtentsNeedFourSensibleWidths) {
    EXPECT_EQ(extents(Words({4, 4, 20, 5}).property()), (Extents{4, 4, 20, 5}));
    EXPECT_EQ(extents(Words({4, 4, 20}).property()), std::nullopt);
    EXPECT_EQ(extents(Words({4, 4, 0xffffffff, 5}).property()), std::nullopt);
    EXPECT_EQ(extents(Words({4, 4, 20, 5}).property(8)), std::nullopt);
    EXPECT_EQ(extents({}), std::nullopt);
}

TEST(Properties, TextIsAlwaysValidUtf8) {
    EXPECT_EQ(text(textProperty("Grüße")), "Grüße");
    EXPECT_EQ(text(textProperty("Gr\xfc\xdf"
                                "e",
                                XCB_ATOM_STRING)),
              "Grüße");
    EXPECT_EQ(text(textProperty("Grüße", XCB_ATOM_STRING)), "Grüße") << "UTF-8 called STRING";
    EXPECT_EQ(text(textProperty("a\xff"
                                "b")),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(text(textProperty(std::string_view("one\0two", 7))), "one");
    EXPECT_EQ(text(Words({1}).property()), "");
}

TEST(Properties, ClassMayLackItsSecondPart) {
    EXPECT_EQ(windowClass(textProperty(std::string_view("xterm\0XTerm\0", 12))),
              (WindowClass{"xterm", "XTerm"}));
    EXPECT_EQ(windowClass(textProperty("xterm")), (WindowClass{"xterm", ""}));
    EXPECT_EQ(windowClass(textProperty(std::string_view("\0XTerm", 6))),
              (WindowClass{"", "XTerm"}));
    EXPECT_EQ(windowClass(textProperty("")), (WindowClass{}));
}

TEST(Properties, PartialStrutWinsOverPlainOne) {
    const Words partial({0, 0, 25, 0, 0, 0, 0, 0, 100, 899, 0, 0});
    const Words plain({0, 0, 30, 0});
    const auto both = strut(partial.property(), plain.property());
    ASSERT_TRUE(both);
    EXPECT_EQ(both->top, 25);
    EXPECT_EQ(both->topStart, 100);
    EXPECT_EQ(both->topEnd, 899);
    const auto plainOnly = strut({}, plain.property());
    ASSERT_TRUE(plainOnly);
    EXPECT_EQ(plainOnly->top, 30);
    EXPECT_GE(plainOnly->topEnd, 100000);
    EXPECT_EQ(strut({}, Words({0, 0, 0, 0}).property()), std::nullopt);
}

TEST(Properties, SizeHintsCountOnlyWhereTheirFlagIsSet) {
    std::vector<std::uint32_t> words(18, 0);
    words[5] = 120;
    words[6] = 80;
    words[9] = 6;
    words[10] = 13;
    EXPECT_EQ(sizeHints(Words(words).property()), (SizeHints{1, 1, 0, 0}));
    words[0] = (1U << 4) | (1U << 6);
    EXPECT_EQ(sizeHints(Words(words).property()), (SizeHints{6, 13, 120, 80}));
    words[5] = 0xffffffff;
    words[9] = 0;
    EXPECT_EQ(sizeHints(Words(words).property()), (SizeHints{1, 13, 0, 80}));
}

}  // namespace
}  // namespace tessellon::x11
