// Where a user's files belong on a freedesktop system, for everything here that reads or writes
// one.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace tessellon {

/// The home folder: $HOME when it is an absolute path, else the one of the user database. Nothing
/// when neither tells.
std::optional<std::filesystem::path> homeFolder();

/// $XDG_CONFIG_HOME, else ~/.config. A relative path in the variable counts as unset, as the XDG
/// base directory standard demands. Nothing without a home folder.
std::optional<std::filesystem::path> configFolder();

/// The folders of settings for all users, the most important first: $XDG_CONFIG_DIRS, else
/// /etc/xdg. Relative paths are left out.
std::vector<std::filesystem::path> systemConfigFolders();

/// The user's folder of data: $XDG_DATA_HOME, else ~/.local/share. Nothing without a home folder.
std::optional<std::filesystem::path> ownDataFolder();

/// The folders of shared data, the most important first: $XDG_DATA_HOME (else ~/.local/share), then
/// $XDG_DATA_DIRS (else /usr/local/share and /usr/share). Relative paths are left out.
std::vector<std::filesystem::path> dataFolders();

}  // namespace tessellon
