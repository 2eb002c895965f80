// Property lists, damaged and malicious ones included.
#include "platform/linux/property_list.h"

#include "linux/property_list_document.h"
#include "linux/temporary_folder.h"
#include "platform/linux/property_list_limits.h"

#include <chrono>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

PropertyDictionary valuesOf(const std::string& body) {
    const auto tree = parsePropertyList(propertyListDocument(body));
    return tree ? propertyDictionary(tree.get()) : PropertyDictionary();
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

std::string nested(int levels) {
    return propertyListDocument("<dict><key>a</key>" + repeated("<array>", levels - 1) +
                                repeated("</array>", levels - 1) + "</dict>");
}

/// A binary list of arrays in which each holds the next one `copies` times, the last a text.
std::string binaryArrays(int levels, int copies) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (int i = 0; i <= levels; ++i) {
        const auto offset = bytes.size();
        offsets += static_cast<char>(offset >> 8);
        offsets += static_cast<char>(offset & 0xFF);
        if (i == levels) {
            bytes += "\x51x";
        } else {
            bytes += static_cast<char>(0xA0 | copies);
            for (int j = 0; j < copies; ++j) {
                bytes += static_cast<char>((i + 1) >> 8);
                bytes += static_cast<char>((i + 1) & 0xFF);
            }
        }
    }
    const auto table = bytes.size();
    bytes += offsets;
    bytes += std::string(6, '\0') + "\x02\x02";
    for (const std::size_t number : {static_cast<std::size_t>(levels + 1), std::size_t{0}, table}) {
        bytes += std::string(6, '\0');
        bytes += static_cast<char>(number >> 8);
        bytes += static_cast<char>(number & 0xFF);
    }
    return bytes;
}

TEST(PropertyListTest, ValuesComeBackExactly) {
    PropertyDictionary values;
    int number = 0;
    for (const double real : {0.1, 1.0 / 3, 60.0, 1e300, 5e-324, -123456789.123456789,
                              std::numeric_limits<double>::infinity()}) {
        values["real" + std::to_string(++number)] = real;
    }
    values["smallest"] = std::numeric_limits<std::int64_t>::min();
    values["largest"] = std::numeric_limits<std::int64_t>::max();
    values["<&>\"' é😀"] = std::string("<&>\"' é😀\n\t ");
    values["data"] = PropertyData{0, 255, '<'};
    values["noData"] = PropertyData();
    values["empty"] = std::string();
    values["array"] = PropertyArray{true, PropertyDictionary{{"a", std::int64_t{1}}}};

    const auto xml = propertyListXml(propertyNode(values).get());
    const auto read = parsePropertyList(xml);
    ASSERT_TRUE(read);
    EXPECT_EQ(propertyDictionary(read.get()), values);
}

TEST(PropertyListTest, WhatXmlCannotHoldIsReplacedNotWritten) {
    const PropertyDictionary values{{"a\x01", std::string("b\0c\xFF", 4)}};
    const auto read = parsePropertyList(propertyListXml(propertyNode(values).get()));
    ASSERT_TRUE(read);
    const PropertyDictionary expected{{"a\uFFFD", std::string("b\uFFFDc\uFFFD")}};
    EXPECT_EQ(propertyDictionary(read.get()), expected);
}

/// Switches the process to a locale with a decimal comma, one made for the purpose when none is
/// installed, and back.
class CommaLocale {
  public:
    CommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
        if (std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {
            works_ = true;
            return;
        }
        const auto command = "localedef -i de_DE -f UTF-8 '" +
                             (folder_.path() / "de_DE.UTF-8").string() + "' >/dev/null 2>&1";
        if (std::system(command.c_str()) == 0) {
            setenv("LOCPATH", folder_.path().c_str(), 1);
            works_ = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
            unsetenv("LOCPATH");
        }
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() { std::setlocale(LC_ALL, previous_.c_str()); }

    bool works() const { return works_; }

  private:
    TemporaryFolder folder_;
    std::string previous_;
    bool works_ = false;
};

TEST(PropertyListTest, NumbersDoNotDependOnTheLocale) {
    const CommaLocale comma;
    if (!comma.works()) {
        GTEST_SKIP() << "no locale with a decimal comma can be had";
    }
    const auto read = valuesOf("<dict><key>a</key><real>0.75</real></dict>");
    EXPECT_EQ(read, (PropertyDictionary{{"a", 0.75}}));
    const auto written = propertyListXml(propertyNode(PropertyDictionary{{"a", 0.75}}).get());
    EXPECT_NE(written.find("<real>0.75</real>"), std::string::npos) << written;
}

TEST(PropertyListTest, OdditiesHaveAValueAndTypesWithoutOneSurvive) {
    const std::string body =
        "<dict><key>huge</key><integer>18446744073709551615</integer>"
        "<key>negative</key><integer>-5</integer>"
        "<key>twice</key><true/><key>twice</key><false/>"
        "<key>date</key><date>2020-02-29T12:00:00Z</date>"
        "<key>uid</key><dict><key>CF$UID</key><integer>3</integer></dict></dict>";
    const auto values = valuesOf(body);
    EXPECT_EQ(values.at("huge"), PropertyValue(18446744073709551615.0));
    EXPECT_EQ(values.at("negative"), PropertyValue(std::int64_t{-5}));
    EXPECT_EQ(values.at("twice"), PropertyValue(false));
    EXPECT_EQ(values.at("date"), PropertyValue(std::string("2020-02-29T12:00:00Z")));
    EXPECT_EQ(values.at("uid"), PropertyValue(PropertyDictionary{{"CF$UID", std::int64_t{3}}}));

    const auto tree = parsePropertyList(propertyListDocument(body));
    const PropertyValue changed = 1.5;
    setPropertyNode(tree.get(), "negative", &changed);
    setPropertyNode(tree.get(), "twice", nullptr);
    const auto xml = propertyListXml(tree.get());
    for (const auto* part : {"<integer>18446744073709551615</integer>", "<real>1.5</real>",
                             "<date>2020-02-29T12:00:00Z</date>", "<key>CF$UID</key>"}) {
        EXPECT_NE(xml.find(part), std::string::npos) << part << " is not in " << xml;
    }
    EXPECT_EQ(xml.find("twice"), std::string::npos);
}

TEST(PropertyListTest, WhatIsNoDictionaryIsRefused) {
    const auto whole = propertyListDocument("<dict><key>a</key><string>b</string></dict>");
    ASSERT_TRUE(parsePropertyList(whole));
    const auto dictionaryEnd = whole.find("</dict>") + std::string("</dict>").size();
    for (std::size_t length = 0; length < dictionaryEnd; ++length) {
        EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << whole.substr(0, length);
    }
    for (const auto* body : {"<array/>", "<string>x</string>", "<dict><true/></dict>", "",
                             "<dict><key>a</key><string>&unknown;</string></dict>",
                             "<dict><key>a</key><bogus/></dict>", "<dict></array></dict>"}) {
        EXPECT_FALSE(parsePropertyList(propertyListDocument(body))) << body;
    }
    EXPECT_FALSE(parsePropertyList("bplist00"));
    EXPECT_FALSE(parsePropertyList("{ a = 1; }"));
    EXPECT_FALSE(parsePropertyList(std::string("\0\1\2\3", 4)));
}

std::string binaryForm(const PropertyDictionary& values) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(propertyNode(values).get(), &bytes, &length);
    std::string binary(bytes, length);
    plist_to_bin_free(bytes);
    return binary;
}

TEST(PropertyListTest, BinaryListsAreRead) {
    PropertyDictionary values{{"real", 0.1},
                              {"integer", std::int64_t{-7}},
                              {"text", std::string("é")},
                              {"data", PropertyData(300, 7)},
                              {"array", PropertyArray{true, false}}};
    const auto binary = binaryForm(values);
    const auto read = parsePropertyList(binary);
    ASSERT_TRUE(read);
    EXPECT_EQ(propertyDictionary(read.get()), values);
    for (std::size_t cut = 1; cut < binary.size(); ++cut) {
        parsePropertyList(binary.substr(0, cut));  // must only not crash
    }
}

TEST(PropertyListTest, AKeyThatABinaryListHoldsTwiceIsChangedForGood) {
    auto binary = binaryForm({{"a", 1.0}, {"b", 2.0}});
    const auto second = binary.find(
        "\x51"
        "b");
    ASSERT_NE(second, std::string::npos);
    binary[second + 1] = 'a';
    const auto tree = parsePropertyList(binary);
    ASSERT_TRUE(tree);
    const PropertyValue changed = 3.0;
    setPropertyNode(tree.get(), "a", &changed);
    const auto read = parsePropertyList(propertyListXml(tree.get()));
    ASSERT_TRUE(read);
    EXPECT_EQ(propertyDictionary(read.get()), (PropertyDictionary{{"a", 3.0}}));
}

TEST(PropertyListLimitsTest, DepthIsLimitedInBothForms) {
    EXPECT_TRUE(parsePropertyList(nested(maxPropertyListDepth)));
    EXPECT_FALSE(parsePropertyList(nested(maxPropertyListDepth + 1)));
    EXPECT_FALSE(parsePropertyList(nested(500'000)));
    EXPECT_TRUE(isWithinPropertyListLimits(binaryArrays(maxPropertyListDepth, 1)));
    EXPECT_FALSE(isWithinPropertyListLimits(binaryArrays(maxPropertyListDepth + 2, 1)));
}

TEST(PropertyListLimitsTest, ClosingTagsThatAreNoneDoNotHideDepth) {
    const auto deep = repeated("<array>", maxPropertyListDepth + 1);
    for (const auto* disguise :
         {"<!-- </array> -->", "<string a='></array>'/>", "<![CDATA[</array>]]>",
          "<plist a='></array>'>", "<?x </array>?>", "<!DOCTYPE [</array>]>", "<!--></array>-->"}) {
        std::string text = "<plist><dict><key>a</key>";
        for (int i = 0; i <= maxPropertyListDepth; ++i) {
            text += "<array>";
            text += disguise;
        }
        EXPECT_FALSE(isWithinPropertyListLimits(text)) << disguise;
    }
}

TEST(PropertyListLimitsTest, WhatWouldKeepTheParserBusyIsRefusedAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(parsePropertyList(binaryArrays(30, 10)));  // 10 to the 30th values
    EXPECT_FALSE(parsePropertyList(propertyListDocument(
        "<dict><key>a</key><string>" + repeated("&lt;", 3'000'000) + "</string></dict>")));
    EXPECT_FALSE(parsePropertyList(
        propertyListDocument("<dict>" + repeated("<key>a</key><true/>", 150'000) + "</dict>")));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

}  // namespace
}  // namespace tessellon
