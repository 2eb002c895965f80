#include "platform/linux/base_directories.h"

#include "platform/linux/environment.h"

#include <array>
#include <string_view>

#include <pwd.h>
#include <unistd.h>

namespace tessellon {
namespace {

using std::filesystem::path;

std::optional<path> absolutePath(std::string_view text) {
    return text.starts_with('/') ? std::optional(path(text)) : std::nullopt;
}

std::optional<path> homeFromUserDatabase() {
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return std::nullopt;
    }
    return absolutePath(found->pw_dir != nullptr ? found->pw_dir : "");
}

/// The folder that a variable names, else the one at `fallback` in the home folder.
std::optional<path> userFolder(const char* variable, const char* fallback) {
    if (auto folder = absolutePath(environment(variable))) {
        return folder;
    }
    if (const auto home = homeFolder()) {
        return *home / fallback;
    }
    return std::nullopt;
}

/// Appends the absolute paths of a list that colons separate: a variable's, else `fallback`.
void appendFolders(std::vector<path>& folders, const char* variable, std::string_view fallback) {
    const auto list = environment(variable);
    for (const auto& folder : colonList(list.empty() ? fallback : list)) {
        if (folder.starts_with('/')) {
            folders.emplace_back(folder);
        }
    }
}

}  // namespace

std::optional<path> homeFolder() {
    if (auto home = absolutePath(environment("HOME"))) {
        return home;
    }
    return homeFromUserDatabase();
}

std::optional<path> configFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

std::vector<path> systemConfigFolders() {
    std::vector<path> folders;
    appendFolders(folders, "XDG_CONFIG_DIRS", "/etc/xdg");
    return folders;
}

std::optional<path> ownDataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}

std::vector<path> dataFolders() {
    std::vector<path> folders;
    if (auto own = ownDataFolder()) {
        folders.push_back(std::move(*own));
    }
    appendFolders(folders, "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    return folders;
}

}  // namespace tessellon
