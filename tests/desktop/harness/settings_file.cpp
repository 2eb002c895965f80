#include "harness/settings_file.h"

#include "harness/process.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <plist/plist.h>

namespace tessellon::desktop {
namespace {

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, FreePlist>;

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

Plist readDictionary(const std::filesystem::path& file) {
    const std::string bytes = fileContents(file);
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    Plist result(root);
    // Whole means up to the end: a file cut short must not pass for a smaller one.
    const bool closed = bytes.starts_with("bplist") || bytes.find("</plist>") != std::string::npos;
    if (!closed || plist_get_node_type(result.get()) != PLIST_DICT) {
        return nullptr;
    }
    return result;
}

std::optional<StoredValue> valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t value = 0;
            plist_get_bool_val(node, &value);
            return value != 0;
        }
        case PLIST_UINT: {
            std::uint64_t value = 0;
            plist_get_uint_val(node, &value);
            return static_cast<double>(static_cast<std::int64_t>(value));
        }
        case PLIST_REAL: {
            double value = 0;
            plist_get_real_val(node, &value);
            return value;
        }
        case PLIST_STRING: {
            char* value = nullptr;
            plist_get_string_val(node, &value);
            const Text owner(value);
            return std::string(value != nullptr ? value : "");
        }
        case PLIST_DATA: {
            char* value = nullptr;
            std::uint64_t length = 0;
            plist_get_data_val(node, &value, &length);
            const Text owner(value);
            return StoredData{std::string(value, length)};
        }
        default:
            return std::nullopt;
    }
}

struct MakeNode {
    plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
    plist_t operator()(double value) const { return plist_new_real(value); }
    plist_t operator()(const std::string& value) const { return plist_new_string(value.c_str()); }
    plist_t operator()(const StoredData& value) const {
        return plist_new_data(value.bytes.data(), value.bytes.size());
    }
    plist_t operator()(const StoredNumbers& value) const {
        plist_t dictionary = plist_new_dict();
        for (const auto& [key, number] : value) {
            plist_dict_set_item(dictionary, key.c_str(), plist_new_real(number));
        }
        return dictionary;
    }
};

}  // namespace

std::optional<StoredValues> readSettings(const std::filesystem::path& file) {
    const Plist root = readDictionary(file);
    if (!root) {
        return std::nullopt;
    }
    StoredValues values;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(root.get(), &iterator);
    const Text owner(static_cast<char*>(iterator));
    while (true) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(root.get(), iterator, &key, &node);
        if (node == nullptr) {
            break;
        }
        const Text keyOwner(key);
        if (auto value = valueOf(node)) {
            values.insert_or_assign(key, *std::move(value));
        }
    }
    return values;
}

void changeSettings(const std::filesystem::path& file, const StoredValues& changes) {
    Plist root = readDictionary(file);
    if (!root) {
        root.reset(plist_new_dict());
    }
    for (const auto& [key, value] : changes) {
        plist_dict_set_item(root.get(), key.c_str(), std::visit(MakeNode{}, value));
    }
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    const Text owner(xml);
    std::filesystem::create_directories(file.parent_path());
    const std::filesystem::path temporary = file.string() + ".edit";
    std::ofstream out(temporary, std::ios::binary);
    out.write(xml, length);
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + temporary.string());
    }
    std::filesystem::rename(temporary, file);
}

}  // namespace tessellon::desktop
