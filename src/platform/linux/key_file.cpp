#include "platform/linux/key_file.h"

#include "platform/linux/glib_text.h"

namespace tessellon {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;

std::string owned(char* text) {
    const GText owner(text);
    return owner ? owner.get() : "";
}

}  // namespace

std::optional<KeyFile> KeyFile::parse(std::string_view text) {
    KeyFile result;
    if (g_key_file_load_from_data(result.file_.get(), text.data(), text.size(), G_KEY_FILE_NONE,
                                  nullptr) == FALSE) {
        return std::nullopt;
    }
    return result;
}

std::string KeyFile::text(const char* key) const {
    return owned(g_key_file_get_string(file_.get(), group, key, nullptr));
}

std::string KeyFile::localText(const char* key) const {
    return owned(g_key_file_get_locale_string(file_.get(), group, key, nullptr, nullptr));
}

std::optional<bool> KeyFile::flag(const char* key) const {
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(file_.get(), group, key, &error) != FALSE;
    if (error != nullptr) {
        g_error_free(error);
        return std::nullopt;
    }
    return value;
}

std::optional<std::vector<std::string>> KeyFile::list(const char* key) const {
    gsize count = 0;
    const std::unique_ptr<char*, decltype(&g_strfreev)> texts(
        g_key_file_get_string_list(file_.get(), group, key, &count, nullptr), &g_strfreev);
    if (!texts) {
        return std::nullopt;
    }
    return std::vector<std::string>(texts.get(), texts.get() + count);
}

void KeyFile::setText(const char* key, const std::string& value) {
    g_key_file_set_string(file_.get(), group, key, value.c_str());
}

void KeyFile::setFlag(const char* key, bool value) {
    g_key_file_set_boolean(file_.get(), group, key, value ? TRUE : FALSE);
}

std::string KeyFile::written() const {
    gsize length = 0;
    const GText text(g_key_file_to_data(file_.get(), &length, nullptr));
    return {text.get(), length};
}

}  // namespace tessellon
