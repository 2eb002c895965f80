// Unicode text helpers, broken UTF-8 included.
#include "base/text.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Text, CanonicallyEquivalentTextsAreEqual) {
    EXPECT_EQ(toNfc("u\u0308"), "\u00FC");
    EXPECT_TRUE(equivalent("cafe\u0301.txt", "caf\u00E9.txt"));
    EXPECT_TRUE(equivalent("\u1112\u1161\u11AB", "\uD55C"));
    EXPECT_FALSE(equivalent("\uFB01", "fi"));
    EXPECT_FALSE(equivalent("a", "A"));
    const std::string withNul("a\0u\u0308", 5);
    EXPECT_EQ(toNfc(withNul), std::string("a\0\u00FC", 4));
    EXPECT_EQ(toNfc(""), "");
}

TEST(Text, BrokenUtf8IsComparedAsItIs) {
    EXPECT_EQ(toNfc("u\u0308\xFF"), "u\u0308\xFF");
    EXPECT_TRUE(equivalent("\xC3", "\xC3"));
    EXPECT_FALSE(equivalent("\xC3", "\xC4"));
}

TEST(Text, CaseMapsCharacterByCharacter) {
    EXPECT_EQ(toUpper("hé\u0431\u00DF1"), "HÉ\u0411\u00DF1");
    EXPECT_EQ(toLower("LEFT Ünïcode"), "left ünïcode");
    EXPECT_EQ(toUpper("a\xFFz"), "A\xFFZ");
}

TEST(Text, TrimsUnicodeWhitespaceAtBothEnds) {
    EXPECT_EQ(trimWhitespace("\u00A0\u3000\n a \u2028 b\t\u0085"), "a \u2028 b");
    EXPECT_EQ(trimWhitespace(" \r\n "), "");
    EXPECT_EQ(trimWhitespace(""), "");
    EXPECT_EQ(trimWhitespace(" \x80 "), "\x80");
    EXPECT_EQ(trimHorizontalWhitespace(" \ta\n\t "), "a\n");
    EXPECT_EQ(trimHorizontalWhitespace("\t "), "");
}

TEST(Text, SanitizingReplacesEveryBrokenSequenceOnce) {
    for (const auto* broken :
         {"\xFF", "\x80", "\xC0\xAF", "\xE2\x8C", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        const auto text = std::string("a").append(broken).append("b");
        EXPECT_FALSE(isValidUtf8(text));
        EXPECT_EQ(sanitizedUtf8(text), "a\uFFFDb");
    }
    EXPECT_EQ(sanitizedUtf8("\xE2"
                            "x\xE2\x8C"),
              "\uFFFDx\uFFFD");
    EXPECT_EQ(sanitizedUtf8("⌘ü\U0001F600"), "⌘ü\U0001F600");
}

TEST(Text, PlainTextHasNothingThatDoesNotShow) {
    EXPECT_EQ(plainText("a\r\nb\rc\fd\u0085e\u2028f\u2029\n"), "a\nb\nc\nd\ne\nf\n\n");
    EXPECT_EQ(plainText(std::string_view("a\tb\0c\x1B[1m\x7F", 9)), "a bc[1m");
    EXPECT_EQ(plainText("\uFEFFa\u202Eb\u2066c\u00ADd\uE000\uFFFE"), "abcd");
    EXPECT_EQ(plainText("a\xFF\xC3"), "a");
    EXPECT_EQ(plainText("\u200D\u200C é\u0301 \U0001F600"), "\u200D\u200C é\u0301 \U0001F600");
}

}  // namespace
}  // namespace tessellon
