#include "platform/linux/autostart_entry.h"

#include "base/text.h"
#include "platform/linux/autostart_file.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/current_desktop.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/detached_program.h"
#include "platform/linux/private_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "app.tessellon.Tessellon.desktop";
constexpr std::size_t largestEntry = 65536;

/// A program that lists what is started at login, and the desktop that it belongs to.
struct LoginSettings {
    std::string_view desktop;
    const char* program;
    /// The page that it is to show; null when it has but one.
    const char* page = nullptr;

    std::vector<std::string> command() const {
        return page != nullptr ? std::vector<std::string>{program, page}
                               : std::vector<std::string>{program};
    }
};

/// The best of a desktop first.
constexpr std::array loginSettings{
    LoginSettings{"XFCE", "xfce4-session-settings"},
    LoginSettings{"XFCE", "xfce4-settings-manager"},
    LoginSettings{"KDE", "kcmshell6", "kcm_autostart"},
    LoginSettings{"KDE", "kcmshell5", "kcm_autostart"},
    LoginSettings{"LXQt", "lxqt-config-session"},
    LoginSettings{"MATE", "mate-session-properties"},
    LoginSettings{"X-Cinnamon", "cinnamon-settings", "startup"},
    LoginSettings{"LXDE", "lxsession-edit"},
    LoginSettings{"LXDE", "lxsession-default-apps"},
    LoginSettings{"Budgie", "budgie-desktop-settings"},
    LoginSettings{"GNOME", "gnome-session-properties"},
    LoginSettings{"GNOME", "gnome-tweaks"},
    LoginSettings{"Unity", "gnome-session-properties"},
};

std::string about(const fs::path& path, std::string_view what) {
    return "“" + sanitizedUtf8(path.string()) + "” " + std::string(what);
}

std::string about(const fs::path& path, std::string_view what, const std::error_code& error) {
    return about(path, what) + ": " + error.message() + ".";
}

std::optional<AutostartFile> readEntry(const fs::path& path,
                                       const std::vector<std::string>& desktops) {
    const auto content = readPrivateFile(path, largestEntry);
    auto entry = content.outcome == FileContent::Outcome::read
                     ? parseAutostartFile(content.bytes, desktops)
                     : std::nullopt;
    // One that the user has switched off stays that, whatever it would have started.
    return entry && entry->isOn && !canBeRun(entry->tryExec) ? std::nullopt : entry;
}

/// Also for a link that leads nowhere: it hides what comes after it in the order of folders.
bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

constexpr std::string_view switchedOff =
    "Tessellon is switched off among the programs that start at login. Switch it on in the startup "
    "settings of your desktop.";

constexpr std::string_view noHome =
    "There is no home folder in which the entry for the login could be kept.";

}  // namespace

AutostartEntry::Places standardAutostartPlaces() {
    constexpr const char* folder = "autostart";
    AutostartEntry::Places places;
    if (const auto own = configFolder()) {
        places.own = *own / folder;
    }
    for (const auto& each : systemConfigFolders()) {
        places.system.push_back(each / folder);
    }
    places.desktops = currentDesktops();
    return places;
}

AutostartEntry::AutostartEntry(Places places, fs::path program)
    : places_(std::move(places)), program_(std::move(program)) {}

bool AutostartEntry::openSystemSettings() {
    for (const auto& settings : loginSettings) {
        const bool isHere = std::find(places_.desktops.begin(), places_.desktops.end(),
                                      settings.desktop) != places_.desktops.end();
        if (isHere && startDetached(settings.command())) {
            return true;
        }
    }
    if (places_.own.empty()) {
        return false;
    }
    std::error_code error;
    makePrivateFolder(places_.own, error);
    return !error && (startDetached({"xdg-open", places_.own.string()}) ||
                      startDetached({"gio", "open", places_.own.string()}));
}

fs::path AutostartEntry::path() const {
    return places_.own / fileName;
}

/// Only the first file of this name counts.
bool AutostartEntry::systemEntryStarts() const {
    for (const auto& folder : places_.system) {
        const auto path = folder / fileName;
        if (isThere(path)) {
            const auto entry = readEntry(path, places_.desktops);
            return entry && entry->isOn;
        }
    }
    return false;
}

LoginItemStatus AutostartEntry::status() const {
    if (places_.own.empty() || !isThere(path())) {
        return systemEntryStarts() ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
    }
    const auto entry = readEntry(path(), places_.desktops);
    if (!entry || entry->isOurRemoval) {
        return LoginItemStatus::notRegistered;
    }
    return entry->isOn ? LoginItemStatus::enabled : LoginItemStatus::requiresApproval;
}

std::optional<std::string> AutostartEntry::registerItem() {
    if (places_.own.empty()) {
        return std::string(noHome);
    }
    if (!canBeInAutostartFile(program_)) {
        return about(program_, "cannot be named in an entry for the login.");
    }
    if (isThere(path())) {
        const auto entry = readEntry(path(), places_.desktops);
        if (entry && !entry->isOurRemoval) {
            if (!entry->isOn) {
                return std::string(switchedOff);
            }
            if (entry->program == execProgram(execValue(program_.string()))) {
                return std::nullopt;
            }
        }
    }
    return write(autostartText(program_, AutostartPurpose::start));
}

std::optional<std::string> AutostartEntry::unregisterItem() {
    if (systemEntryStarts()) {
        if (places_.own.empty()) {
            return std::string(noHome);
        }
        return write(autostartText(program_, AutostartPurpose::removal));
    }
    if (places_.own.empty() || ::unlink(path().c_str()) == 0 || errno == ENOENT ||
        errno == ENOTDIR) {
        changed_.emit();
        return std::nullopt;
    }
    return about(path(), "could not be removed", {errno, std::generic_category()});
}

std::optional<std::string> AutostartEntry::write(std::string_view text) {
    // A link, as those make who keep their settings elsewhere, stays one.
    const auto file = followLinks(path());
    std::error_code error;
    const auto kind = fs::status(file, error).type();
    if (kind != fs::file_type::not_found && kind != fs::file_type::regular &&
        kind != fs::file_type::none) {
        return about(file, "is no file that could be replaced.");
    }
    makePrivateFolder(file.parent_path(), error);
    if (error) {
        return about(file.parent_path(), "could not be created", error);
    }
    if (!replacePrivateFile(file, text, error)) {
        return about(file, "could not be written", error);
    }
    // It is in place; whether the disk holds it already is not worth a message.
    syncPrivateFile(file, error);
    changed_.emit();
    return std::nullopt;
}

}  // namespace tessellon
