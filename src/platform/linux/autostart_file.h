// What a file says that desktops read at login (freedesktop.org Desktop Application Autostart 0.5);
// for AutostartEntry.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

struct AutostartFile {
    /// The first word of Exec.
    std::string program;
    /// Without it, when it is named, the entry is not started: a path, or a name to be found in
    /// PATH.
    std::string tryExec;
    /// Not deleted at this level (Hidden), not switched off by a desktop's settings, and meant for
    /// this desktop.
    bool isOn = false;
    /// Written by ourselves to keep an entry for all users from being started.
    bool isOurRemoval = false;
};

/// Nothing when no desktop would start anything for this text, whatever is installed. `desktops`
/// are the names of the one that runs.
std::optional<AutostartFile> parseAutostartFile(std::string_view text,
                                                const std::vector<std::string>& desktops);

enum class AutostartPurpose {
    start,
    removal,  // of an entry for all users, which this one hides
};

/// The text of an entry that starts the program, or keeps it from being started.
std::string autostartText(const std::filesystem::path& program, AutostartPurpose purpose);

/// Whether an entry can hold the path: its text is UTF-8 and of one line.
bool canBeInAutostartFile(const std::filesystem::path& program);

/// A program's path as the value of an Exec key (Desktop Entry 1.5): quoted, and of a "%" no field
/// code is made. Not escaped yet as every value is in such a file.
std::string execValue(std::string_view program);

}  // namespace tessellon
