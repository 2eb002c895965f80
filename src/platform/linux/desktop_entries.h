// The installed applications as their desktop files describe them.
#pragma once

#include "platform/application_directory.h"
#include "platform/run_loop.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace tessellon {

/// A folder of desktop files.
struct ApplicationFolder {
    enum class Owner : std::uint8_t { user, everyone };
    std::filesystem::path path;
    Owner owner = Owner::everyone;
    bool operator==(const ApplicationFolder&) const = default;
};

/// Reads the desktop files at the first look-up, and again when a folder has got or lost one; that
/// is looked for every two seconds at most, and only at look-ups.
class DesktopEntries final : public ApplicationDirectory {
  public:
    /// `folders` holds the "applications" folders, the most important first: of two files with the
    /// same id the first counts. The loop tells the time.
    DesktopEntries(const RunLoop& loop, std::vector<ApplicationFolder> folders);

    ~DesktopEntries() override;
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;

    /// Of several entries that match equally well, those that menus show come first, then the one
    /// in the more important folder, then the alphabet.
    std::optional<InstalledApplication> lookUp(const ApplicationHints& hints) const override;

    std::optional<InstalledApplication> withIdentifier(std::string_view identifier) const override;

    /// Of several of the same name, one that menus show comes before those that they do not, and
    /// one for everyone before the user's own.
    std::optional<InstalledApplication> named(std::string_view name) const override;

    /// Without those of other desktops and those that say themselves that they cannot be run.
    std::vector<InstalledApplication> shown() const override;

  private:
    class Catalog;

    const Catalog& catalog() const;

    const RunLoop& loop_;
    std::vector<ApplicationFolder> folders_;

    // What was read, kept between look-ups.
    mutable std::unique_ptr<const Catalog> catalog_;
    mutable Seconds checkedAt_{};
};

/// The "applications" folders of this user's session, the most important first: the user's, those
/// for everyone, and last what Flatpak and Snap export, should the session not name that itself.
std::vector<ApplicationFolder> applicationFolders();

}  // namespace tessellon
