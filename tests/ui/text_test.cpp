// Texts of others on their way into a line of ours.
#include "ui/text.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Text, ASingleLineHasNoBreaksAndNothingThatDoesNotShow) {
    EXPECT_EQ(singleLine(std::string_view(" a\nb\tc\u202Ed\x1B ")), "a b cd");
    EXPECT_EQ(singleLine(std::string_view("\xFF\xFE")), "");
    EXPECT_EQ(singleLine(QStringLiteral("one\u2028two")), "one two");
    std::string hidden;
    for (int i = 0; i < 1599; ++i) {
        hidden += "\u200B";
    }
    EXPECT_EQ(singleLine(std::string_view(hidden + "ääää")), "ä") << "the next one is cut in two";
}

TEST(Text, LongTextsAreCutBetweenCharacters) {
    for (const std::string_view character : {"W", "ä", "か", "😀"}) {
        std::string text;
        for (int i = 0; i < 20000; ++i) {
            text += character;
        }
        const auto line = singleLine(std::string_view(text));
        EXPECT_GT(line.size(), 200);
        EXPECT_LT(line.size(), 400);
        const auto whole = line.chopped(1).toStdString();
        EXPECT_TRUE(whole.ends_with(character)) << character;
        EXPECT_TRUE(text.starts_with(whole)) << character;
        EXPECT_TRUE(line.endsWith(QChar(0x2026)));
    }
}

TEST(Text, OnlyAWordIsIsolated) {
    EXPECT_EQ(isolated(QString()), QString());
    EXPECT_EQ(isolated("אבג"), QString::fromUtf8("\u2068אבג\u2069"));
}

}  // namespace
}  // namespace tessellon
