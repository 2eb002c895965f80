#include "platform/linux/base_directories.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include <pwd.h>
#include <unistd.h>

namespace tessellon {
namespace {

using std::filesystem::path;

std::optional<path> absolutePath(const char* text) {
    if (text == nullptr || *text != '/') {
        return std::nullopt;
    }
    return path(text);
}

std::optional<path> homeFromUserDatabase() {
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return std::nullopt;
    }
    return absolutePath(found->pw_dir);
}

/// The folder that a variable names, else the one at `fallback` in the home folder.
std::optional<path> userFolder(const char* variable, const char* fallback) {
    if (auto folder = absolutePath(std::getenv(variable))) {
        return folder;
    }
    if (const auto home = homeFolder()) {
        return *home / fallback;
    }
    return std::nullopt;
}

/// Appends the absolute paths of a list that colons separate: a variable's, else `fallback`.
void appendFolders(std::vector<path>& folders, const char* name, std::string_view fallback) {
    const char* variable = std::getenv(name);
    std::string_view rest = variable != nullptr && *variable != '\0' ? variable : fallback;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (rest.starts_with('/')) {
            folders.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

}  // namespace

std::optional<path> homeFolder() {
    if (auto home = absolutePath(std::getenv("HOME"))) {
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
