// The JSON reader against hostile input, and the writer's output to the byte.
#include "base/json.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

std::optional<Json> parse(std::string_view text) {
    return parseJson({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::string written(JsonWriter&& writer) {
    const auto bytes = std::move(writer).finish();
    return bytes ? std::string(bytes->begin(), bytes->end()) : "(nothing)";
}

std::string numberText(double value) {
    JsonWriter writer;
    writer.number(value);
    return written(std::move(writer));
}

TEST(ParseJson, RefusesWhatIsNotExactlyOneDocument) {
    using namespace std::string_view_literals;
    for (const auto text : {
             ""sv,
             "  "sv,
             "[1,2"sv,
             "{\"a\":}"sv,
             "[1] x"sv,
             "[1][2]"sv,
             "[1,]"sv,
             "{'a':1}"sv,
             "[1] // note"sv,
             "[01]"sv,
             "[NaN]"sv,
             "[1e999]"sv,
             "[-1e999]"sv,
             "\"\xC3\x28\""sv,
             "\"\xED\xA0\x80\""sv,
             "\"\\ud800\""sv,
             "\"a\nb\""sv,
             "\"unfinished"sv,
             "\"unfinished\\"sv,
             "[]\0garbage"sv,
             "[]\0"sv,
         }) {
        EXPECT_FALSE(parse(text)) << text;
    }
}

TEST(ParseJson, RefusesHostileNestingAtOnce) {
    const std::size_t many = 1000000;
    EXPECT_FALSE(parse(std::string(many, '[')));
    EXPECT_FALSE(parse(std::string(many, '[') + std::string(many, ']')));
    std::string objects;
    for (std::size_t i = 0; i < many; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_FALSE(parse(objects));
    EXPECT_FALSE(parse(std::string(many, ']')));
}

TEST(ParseJson, BracketsInsideTextsAreNoNesting) {
    const auto document =
        parse("[\"" + std::string(100, '[') + "\\\"" + std::string(100, '{') + "\"]");
    ASSERT_TRUE(document);
    EXPECT_EQ((*document)[0].get<std::string>().size(), 201U);
}

TEST(ParseJson, TheLastOfEqualKeysCounts) {
    const auto document = parse(R"({"a":"x","b":1,"a":"y"})");
    ASSERT_TRUE(document);
    EXPECT_EQ(jsonString(*document, "a"), "y");
}

TEST(JsonMembers, IntegersMayBeWrittenAnyWayButMustFit) {
    const auto document = parse(
        R"({"plain":-5,"point":4.0,"power":1e3,"half":0.5,"yes":true,"text":"1",
            "i64max":9223372036854775807,"i64over":9223372036854775808,
            "u64max":18446744073709551615,"u64over":18446744073709551616,"huge":1e300,
            "i64min":-9223372036854775808,"under":-9223372036854775809})");
    ASSERT_TRUE(document);
    const auto& object = *document;
    EXPECT_EQ(jsonInteger(object, "plain"), -5);
    EXPECT_EQ(jsonUnsigned(object, "plain"), std::nullopt);
    EXPECT_EQ(jsonInteger(object, "point"), 4);
    EXPECT_EQ(jsonUnsigned(object, "power"), 1000U);
    for (const auto* key : {"half", "yes", "text", "huge", "u64over", "missing"}) {
        EXPECT_EQ(jsonInteger(object, key), std::nullopt) << key;
        EXPECT_EQ(jsonUnsigned(object, key), std::nullopt) << key;
    }
    EXPECT_EQ(jsonInteger(object, "i64max"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(jsonInteger(object, "i64over"), std::nullopt);
    EXPECT_EQ(jsonUnsigned(object, "u64max"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(jsonInteger(object, "i64min"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(jsonInteger(Json(3), "plain"), std::nullopt);
}

TEST(JsonMembers, RectanglesAreTwoPairsOfNumbers) {
    const auto document = parse(
        R"({"good":[[1,2.5],[-3,4]],"flat":[1,2,3,4],"short":[[1,2],[3]],"long":[[1,2],[3,4],[5,6]],
            "text":[["1",2],[3,4]],"null":null})");
    ASSERT_TRUE(document);
    EXPECT_EQ(jsonRect(*document, "good"), (Rect{1, 2.5, -3, 4}));
    for (const auto* key : {"flat", "short", "long", "text", "null", "missing"}) {
        EXPECT_EQ(jsonRect(*document, key), std::nullopt) << key;
    }
}

TEST(JsonWriter, NumbersAreShortestAndReadBackTheSame) {
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(-0.0), "0");
    EXPECT_EQ(numberText(120), "120");
    EXPECT_EQ(numberText(100000), "100000");
    EXPECT_EQ(numberText(0.5), "0.5");
    EXPECT_EQ(numberText(-2.25), "-2.25");
    EXPECT_EQ(numberText(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(numberText(0.1 + 0.2), "0.30000000000000004");
    for (const double value :
         {1e300, 5e-324, -1.7976931348623157e308, 0.0001, 1e15, 0x1p54, 1e22}) {
        const auto document = parse(numberText(value));
        ASSERT_TRUE(document) << value;
        EXPECT_EQ(document->get<double>(), value);
    }
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "(nothing)");
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "(nothing)");
}

TEST(JsonWriter, WritesCompactDocumentsInTheOrderGiven) {
    JsonWriter writer;
    writer.beginObject().key("b").beginArray().integer(-1).unsignedInteger(2).endArray();
    writer.key("a").beginObject().endObject().key("r").rect({0, 0, 0.5, 1}).endObject();
    EXPECT_EQ(written(std::move(writer)), R"({"b":[-1,2],"a":{},"r":[[0,0],[0.5,1]]})");
}

TEST(JsonWriter, EscapesWhatMustBeEscapedAndTheSlash) {
    const std::string text("a/b\"\\\b\f\n\r\t\x01\x1f\0ü⌘", 18);
    JsonWriter writer;
    writer.string(text);
    const auto json = written(std::move(writer));
    EXPECT_EQ(json, R"("a\/b\"\\\b\f\n\r\t\u0001\u001f\u0000ü⌘")");
    const auto document = parse(json);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->get<std::string>(), text);

    JsonWriter invalid;
    invalid.string("\xFF");
    EXPECT_EQ(written(std::move(invalid)), "(nothing)");
}

}  // namespace
}  // namespace tessellon
