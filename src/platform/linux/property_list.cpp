#include "platform/linux/property_list.h"

#include "base/text.h"
#include "platform/linux/property_list_limits.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <utility>

#include <locale.h>
#include <time.h>

namespace tessellon {
namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
using CText = std::unique_ptr<char, FreeDeleter>;

/// libplist reads real numbers with the decimal point of the locale, which toolkits set to the
/// user's. While one of these lives, this thread has the point.
class PlainNumbers {
  public:
    PlainNumbers() : plain_(newlocale(LC_ALL_MASK, "C", locale_t{})) {
        if (plain_ != locale_t{}) {
            previous_ = uselocale(plain_);
        }
    }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    ~PlainNumbers() {
        if (plain_ != locale_t{}) {
            uselocale(previous_);
            freelocale(plain_);
        }
    }

  private:
    locale_t plain_;
    locale_t previous_{};
};

/// Text as XML 1.0 can hold it: valid UTF-8 without the control characters that have no form there.
std::string xmlText(std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string result;
    for (const char c : sanitizedUtf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') {
            result += replacement;
        } else {
            result += c;
        }
    }
    return result;
}

std::string dateText(plist_t node) {
    constexpr std::int64_t secondsTo2001 = 978'307'200;
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    const auto time = static_cast<time_t>(seconds + secondsTo2001);
    tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 64> buffer{};
    const auto length = std::strftime(buffer.data(), buffer.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return {buffer.data(), length};
}

/// libplist gives the same 64 bits for a negative number and for one of 2^63 and more; only its
/// output tells the two apart.
PropertyValue integerValue(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    if (bits <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) ||
        propertyListXml(node).find("<integer>-") != std::string::npos) {
        return static_cast<std::int64_t>(bits);
    }
    return static_cast<double>(bits);
}

PropertyValue realValue(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
}

PropertyValue dataValue(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = plist_get_data_ptr(node, &length);
    return bytes != nullptr ? PropertyData(bytes, bytes + length) : PropertyData();
}

PropertyValue arrayValue(plist_t node) {
    PropertyArray array;
    plist_array_iter rawIterator = nullptr;
    plist_array_new_iter(node, &rawIterator);
    const std::unique_ptr<void, FreeDeleter> iterator(rawIterator);
    plist_t item = nullptr;
    while (plist_array_next_item(node, iterator.get(), &item), item != nullptr) {
        array.push_back(propertyValue(item));
    }
    return array;
}

PropertyList parseTree(std::string_view bytes) {
    if (!isWithinPropertyListLimits(bytes)) {
        return nullptr;
    }
    const PlainNumbers plainNumbers;
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    PropertyList list(root);
    return PLIST_IS_DICT(root) ? std::move(list) : nullptr;
}

}  // namespace

PropertyList parsePropertyList(std::string_view bytes) {
    auto tree = parseTree(bytes);
    // A binary list may hold what the XML form cannot, such as a key twice, of which a change would
    // reach only one. So the tree returned is one that has been written and read once.
    constexpr int mostRounds = 3;
    for (int round = 0; tree != nullptr && round < mostRounds; ++round) {
        const auto xml = propertyListXml(tree.get());
        auto written = parseTree(xml);
        if (written == nullptr) {
            break;
        }
        if (propertyListXml(written.get()) == xml) {
            return written;
        }
        tree = std::move(written);
    }
    return tree != nullptr ? propertyNode(propertyDictionary(tree.get())) : nullptr;
}

std::string propertyListXml(plist_t root) {
    const PlainNumbers plainNumbers;
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root, &text, &length);
    const CText owned(text);
    return owned ? std::string(owned.get(), length) : std::string();
}

PropertyValue propertyValue(plist_t node) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t flag = 0;
            plist_get_bool_val(node, &flag);
            return flag != 0;
        }
        case PLIST_UINT:
            return integerValue(node);
        case PLIST_REAL:
            return realValue(node);
        case PLIST_DATE:
            return dateText(node);
        case PLIST_DATA:
            return dataValue(node);
        case PLIST_ARRAY:
            return arrayValue(node);
        case PLIST_DICT:
            return propertyDictionary(node);
        case PLIST_UID: {
            std::uint64_t uid = 0;
            plist_get_uid_val(node, &uid);
            return PropertyDictionary{{"CF$UID", static_cast<std::int64_t>(uid)}};
        }
        case PLIST_STRING:
        case PLIST_KEY:
        case PLIST_NONE:
            break;
    }
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text != nullptr ? std::string(text, length) : std::string();
}

PropertyDictionary propertyDictionary(plist_t dictionary) {
    PropertyDictionary result;
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(dictionary, &rawIterator);
    const std::unique_ptr<void, FreeDeleter> iterator(rawIterator);
    while (true) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dictionary, iterator.get(), &rawKey, &item);
        const CText key(rawKey);
        if (item == nullptr || key == nullptr) {
            return result;
        }
        result.insert_or_assign(key.get(), propertyValue(item));
    }
}

PropertyList propertyNode(const PropertyValue& value) {
    struct Maker {
        plist_t operator()(bool flag) const { return plist_new_bool(flag ? 1 : 0); }
        plist_t operator()(std::int64_t number) const {
            return plist_new_uint(static_cast<std::uint64_t>(number));
        }
        plist_t operator()(double number) const { return plist_new_real(number); }
        plist_t operator()(const std::string& text) const {
            return plist_new_string(xmlText(text).c_str());
        }
        plist_t operator()(const PropertyData& data) const {
            return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
        }
        plist_t operator()(const PropertyArray& array) const {
            plist_t node = plist_new_array();
            for (const auto& item : array) {
                plist_array_append_item(node, propertyNode(item).release());
            }
            return node;
        }
        plist_t operator()(const PropertyDictionary& dictionary) const {
            plist_t node = plist_new_dict();
            for (const auto& [key, item] : dictionary) {
                setPropertyNode(node, key, &item);
            }
            return node;
        }
    };
    using Base = PropertyValue::variant;
    return PropertyList(std::visit(Maker(), static_cast<const Base&>(value)));
}

void setPropertyNode(plist_t dictionary, std::string_view key, const PropertyValue* value) {
    const auto name = xmlText(key);
    if (value != nullptr) {
        plist_dict_set_item(dictionary, name.c_str(), propertyNode(*value).release());
    } else if (plist_dict_get_item(dictionary, name.c_str()) != nullptr) {
        plist_dict_remove_item(dictionary, name.c_str());
    }
}

}  // namespace tessellon
