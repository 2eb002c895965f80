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

    /// An entry of our name that starts another program counts as ours; registering corrects it.
    /// One that the desktop's settings have switched off, or that is for other desktops only,
    /// requires approval; one that was switched off for all users, or that no desktop would start
    /// (because its TryExec cannot be run, say), counts as none.
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

}  // namespace tessellon
