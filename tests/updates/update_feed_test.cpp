#include "updates/update_feed.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

constexpr std::string_view webFeed = "https://example.org/feed.json";
constexpr std::string_view fileFeed = "file:///srv/feed.json";

Version version(std::string_view text) {
    return Version::parse(text).value();
}

std::optional<Update> read(std::string_view text, std::string_view address = webFeed) {
    return parseUpdateFeed({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                           address);
}

std::optional<Update> readPage(const std::string& page, std::string_view address = webFeed) {
    return read(R"({"version": "1", "page": ")" + page + "\"}", address);
}

std::string notesOf(const std::string& json) {
    const auto update =
        read(R"({"version": "1", "page": "https://example.org", "notes": ")" + json + "\"}");
    return update ? update->notes : "no update";
}

TEST(VersionTest, PartsCompareAsNumbers) {
    EXPECT_GT(version("1.10"), version("1.9"));
    EXPECT_GT(version("2"), version("1.99.99.99"));
    EXPECT_GT(version("1.0.0.1"), version("1"));
    EXPECT_EQ(version("1.0"), version("1.0.0"));
    EXPECT_EQ(version("1.04"), version("1.4"));
    EXPECT_LT(version("0.999999999"), version("1"));
    EXPECT_EQ(version("1.04.0").text(), "1.4.0");
}

TEST(VersionTest, OnlyDottedNumbersAreVersions) {
    for (const auto* text : {"", ".", "1.", ".1", "1..2", "1.2.3.4.5", "1234567890", "1.1234567890",
                             "v1", "1.0b", "-1", "+1", " 1", "1 ", "1,2", "0x10", "1e3", "١"}) {
        EXPECT_FALSE(Version::parse(text)) << text;
    }
    EXPECT_FALSE(Version::parse(std::string_view("1\0", 2)));
}

TEST(UpdateFeedTest, TakesWhatItKnowsAndIgnoresTheRest) {
    const auto update = read(
        R"({"size": 12, "version": "1.4.0", "page": "https:\/\/example.org:8443/new?a=b#c",
            "notes": "Grüße\nand more", "nested": {"version": "9"}})");
    ASSERT_TRUE(update);
    EXPECT_EQ(*update,
              (Update{version("1.4"), "https://example.org:8443/new?a=b#c", "Grüße\nand more"}));
    EXPECT_EQ(read(R"({"version": "1", "page": "https://example.org"})")->notes, "");
}

TEST(UpdateFeedTest, RefusesWhatIsNoFeed) {
    for (const auto* text :
         {"", "null", "[]", "\"1\"", "<html></html>", R"({"version": "1"})",
          R"({"page": "https://example.org"})", R"({"version": 1, "page": "https://example.org"})",
          R"({"version": "1", "page": ["https://example.org"]})",
          R"({"version": "1", "page": "https://example.org", "notes": null})",
          R"({"version": "newest", "page": "https://example.org"})",
          R"({"version": "1", "page": "https://example.org"} trailing)",
          R"({"version": "1", "page": "https://example.org",})",
          "{\"version\": \"1\", \"page\": \"https://example.org\", \"notes\": \"\xFF\"}"}) {
        EXPECT_FALSE(read(text)) << text;
    }
    EXPECT_FALSE(read(std::string(50000, '[')));
    const std::string whole = R"({"version": "1", "page": "https://example.org"})";
    EXPECT_TRUE(read(whole + std::string(largestFeed - whole.size(), ' ')));
    EXPECT_FALSE(read(whole + std::string(largestFeed + 1 - whole.size(), ' ')));
}

TEST(UpdateFeedTest, ThePageIsOnTheWebAndNowhereElse) {
    for (const auto* page : {"http://example.org",
                             "file:///etc/passwd",
                             "javascript:alert(1)",
                             "ftp://example.org",
                             "//example.org",
                             "example.org",
                             "",
                             "https://",
                             "https:///path",
                             "https://:443/",
                             "https://you@example.org/",
                             "https://example.org@evil.test",
                             "HTTPS://example.org",
                             "https://example.org/a b",
                             "https://example.org/\\n",
                             "https://example.org/\\u0000",
                             "https://exämple.org",
                             "https://example.org/\\\"--option",
                             " https://example.org",
                             "https://evil.test\\\\@example.org"}) {
        EXPECT_FALSE(readPage(page)) << page;
    }
    EXPECT_TRUE(readPage("https://example.org/" + std::string(2028, 'a')));
    EXPECT_FALSE(readPage("https://example.org/" + std::string(2029, 'a')));
    EXPECT_TRUE(readPage("https://example.org/@somebody"));
}

TEST(UpdateFeedTest, OnlyAFileNamesAFile) {
    EXPECT_TRUE(readPage("file:///srv/new.html", fileFeed));
    EXPECT_TRUE(readPage("https://example.org", fileFeed));
    EXPECT_FALSE(readPage("file:///srv/new.html", webFeed));
    EXPECT_FALSE(readPage("file://host/new.html", fileFeed));
    EXPECT_FALSE(readPage("file:///", fileFeed));
    EXPECT_FALSE(readPage("http://example.org", fileFeed));
}

TEST(UpdateFeedTest, NotesArePlainText) {
    EXPECT_EQ(notesOf(R"(  \n a\r\nb\tc\u2028d\n\n\n\n\ne \n)"), "a\nb c\nd\n\ne");
    EXPECT_EQ(notesOf(R"(a\u001b[31m\u0007\u0085b\u007f\u009b)"), "a[31m\nb");
    EXPECT_EQ(notesOf(R"(gpj\u202E.exe \u2066x\u2069 \uFEFFy\u200By)"), "gpj.exe x yy");
    EXPECT_EQ(notesOf(R"(\u0646\u200C\u0627 <b>&amp;)"), "\u0646\u200C\u0627 <b>&amp;")
        << "letters keep their joiners, and markup is text like any other";
}

TEST(UpdateFeedTest, LongNotesAreCutBetweenCharacters) {
    std::string notes;
    for (int i = 0; i < 4200; ++i) {
        notes += "ä";
    }
    const auto cut = notesOf(notes);
    EXPECT_LE(cut.size(), 8192U);
    EXPECT_GT(cut.size(), 8186U);
    EXPECT_TRUE(cut.ends_with("ä…"));
    EXPECT_EQ(notesOf(std::string(8192, 'a')), std::string(8192, 'a'));
}

}  // namespace
}  // namespace tessellon
