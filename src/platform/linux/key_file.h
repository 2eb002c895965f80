// The group "Desktop Entry" of a desktop file (freedesktop.org Desktop Entry 1.5), for those who
// read or write one.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

namespace tessellon {

class KeyFile {
  public:
    /// One without any keys.
    KeyFile() : file_(g_key_file_new()) {}
    /// Nothing when the text is no file of this form.
    static std::optional<KeyFile> parse(std::string_view text);

    /// What is under a key; "" when there is none.
    std::string text(const char* key) const;
    /// The same in the user's language, which LANGUAGE, LC_ALL, LC_MESSAGES and LANG name, else as
    /// it is without one.
    std::string localText(const char* key) const;
    /// Nothing when there is no such key, or it holds something else.
    std::optional<bool> flag(const char* key) const;
    std::optional<std::vector<std::string>> list(const char* key) const;

    void setText(const char* key, const std::string& value);
    void setFlag(const char* key, bool value);

    /// The file's text.
    std::string written() const;

  private:
    struct Deleter {
        void operator()(GKeyFile* file) const { g_key_file_free(file); }
    };
    std::unique_ptr<GKeyFile, Deleter> file_;
};

}  // namespace tessellon
