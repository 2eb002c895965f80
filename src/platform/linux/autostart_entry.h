// The program's entry among those that the desktop starts at login (freedesktop.org Desktop
// Application Autostart 0.5).
#pragma once

#include "platform/login_item.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

class AutostartEntry final : public LoginItem {
  public:
    struct Places {
        /// The user's folder of entries; empty when there is no home folder.
        std::filesystem::path own;
        /// The folders of entries for all users, the most important first.
        std::vector<std::filesystem::path> system;
        /// The names of the desktop that runs, as $XDG_CURRENT_DESKTOP lists them.
        std::vector<std::string> desktops;
    };

    /// `program` is the absolute path of what is to be started.
    AutostartEntry(Places places, std::filesystem::path program);

    /// An entry that another program of this name would be started by counts as ours: registering
    /// corrects it. One that the desktop's settings have switched off, or that is for other
    /// desktops only, requires approval; one that was switched off for all users, or that no
    /// desktop would start (because its TryExec cannot be run, say), counts as none.
    LoginItemStatus status() const override;
    std::optional<std::string> registerItem() override;
    std::optional<std::string> unregisterItem() override;
    bool openSystemSettings() override;

    /// The user's entry, which need not exist.
    std::filesystem::path path() const;

  private:
    std::optional<std::string> write(std::string_view text);
    bool systemEntryStarts() const;

    Places places_;
    std::filesystem::path program_;
};

/// The places that the environment names.
AutostartEntry::Places standardAutostartPlaces();

/// What one file says.
struct AutostartFile {
    /// The first word of Exec.
    std::string program;
    /// Without it, when it is named, the entry is not started: a path, or a name to be found in
    /// PATH.
    std::string tryExec;
    /// Not deleted at this level (Hidden), not switched off by a desktop's settings, and meant for
    /// this desktop.
    bool isOn = false;
    /// Written by unregisterItem to keep an entry for all users from being started.
    bool isOurRemoval = false;
};

/// Nothing when no desktop would start anything for this text, whatever is installed.
std::optional<AutostartFile> parseAutostartFile(std::string_view text,
                                                const std::vector<std::string>& desktops);

/// A program's path as the value of an Exec key (Desktop Entry 1.5): quoted, and of a "%" no field
/// code is made. Not escaped yet as every value is in such a file.
std::string execValue(std::string_view program);

}  // namespace tessellon
