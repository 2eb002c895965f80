// One desktop file, read for what ties a window to its program.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

/// The group "Desktop Entry" of a file of type Application (freedesktop.org Desktop Entry 1.5).
struct DesktopEntry {
    /// Name in the user's language.
    std::string name;
    /// Name as it is without any language.
    std::string plainName;
    /// The name of an icon or the absolute path of a picture.
    std::string icon;
    std::string startupWmClass;
    /// The program that Exec starts as it is written there: a name or an absolute path. Empty when
    /// that is a launcher or an interpreter, which says nothing about the program.
    std::string program;
    /// TryExec, under the same rule.
    std::string tryProgram;
    /// TryExec as it is written: without that program the application counts as not installed.
    std::string tryExec;
    /// The desktops whose menus alone show it, when that is limited, and those whose menus do not.
    std::optional<std::vector<std::string>> onlyShowIn;
    std::optional<std::vector<std::string>> notShowIn;
    /// How many words Exec has, place holders such as %U left out.
    int execWords = 0;
    bool noDisplay = false;
    bool hidden = false;
    bool operator==(const DesktopEntry&) const = default;
};

/// Nothing when the text is no desktop file or one of another type. The language is taken from
/// LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

/// Whether something with these lists of desktops is meant for one of these names.
bool isForDesktops(const std::optional<std::vector<std::string>>& onlyShowIn,
                   const std::optional<std::vector<std::string>>& notShowIn,
                   const std::vector<std::string>& desktops);

/// Whether menus show the application on a desktop of these names. Whether it can be run is not
/// looked at.
bool isShown(const DesktopEntry& entry, const std::vector<std::string>& desktops);

/// Whether the condition that TryExec makes is met: there is none, or the program at the path or of
/// that name on PATH can be run.
bool canBeRun(const std::string& tryExec);

/// The program that the value of an Exec key starts, with "env" and its assignments skipped. Empty
/// when the value cannot be split into words.
std::string execProgram(std::string_view exec);

/// True for programs that run many different applications, such as "python3.11", "sh" or "flatpak",
/// given by name or by path.
bool isGenericLauncher(std::string_view program);

}  // namespace tessellon
