#include "platform/linux/autostart_entry.h"

#include "base/text.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/current_desktop.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/detached_program.h"
#include "platform/linux/private_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include <glib.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "app.tessellon.Tessellon.desktop";
constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
/// How desktops that leave the file otherwise alone switch an entry off.
constexpr const char* desktopSwitch = "X-GNOME-Autostart-enabled";
/// Tells an entry that we have switched off from one that the user has.
constexpr const char* removalMark = "X-Tessellon-Removed";
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

struct KeyFileDeleter {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;

struct GFreeDeleter {
    void operator()(void* memory) const { g_free(memory); }
};
using GText = std::unique_ptr<char, GFreeDeleter>;

std::string textOf(GKeyFile* file, const char* key) {
    const GText text(g_key_file_get_string(file, group, key, nullptr));
    return text ? text.get() : "";
}

/// What the key says, else `fallback`.
bool flagOf(GKeyFile* file, const char* key, bool fallback) {
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(file, group, key, &error) != FALSE;
    if (error != nullptr) {
        g_error_free(error);
        return fallback;
    }
    return value;
}

/// True when the list under the key names one of the desktops; nothing when there is no list.
std::optional<bool> lists(GKeyFile* file, const char* key,
                          const std::vector<std::string>& desktops) {
    gsize count = 0;
    const std::unique_ptr<char*, decltype(&g_strfreev)> names(
        g_key_file_get_string_list(file, group, key, &count, nullptr), &g_strfreev);
    if (!names) {
        return std::nullopt;
    }
    return std::any_of(names.get(), names.get() + count, [&desktops](const char* name) {
        return std::find(desktops.begin(), desktops.end(), name) != desktops.end();
    });
}

enum class Removal { none, ours };

std::string entryText(const fs::path& program, Removal removal) {
    const KeyFile file(g_key_file_new());
    const auto text = [&file](const char* key, const std::string& value) {
        g_key_file_set_string(file.get(), group, key, value.c_str());
    };
    const auto flag = [&file](const char* key, bool value) {
        g_key_file_set_boolean(file.get(), group, key, value ? TRUE : FALSE);
    };
    text(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    text(G_KEY_FILE_DESKTOP_KEY_VERSION, "1.5");
    text(G_KEY_FILE_DESKTOP_KEY_NAME, "Tessellon");
    text(G_KEY_FILE_DESKTOP_KEY_COMMENT, "Puts windows where you want them");
    text(G_KEY_FILE_DESKTOP_KEY_ICON, "app.tessellon.Tessellon");
    text(G_KEY_FILE_DESKTOP_KEY_EXEC, execValue(program.string()));
    text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, program.string());
    flag(G_KEY_FILE_DESKTOP_KEY_TERMINAL, false);
    flag(G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY, false);
    flag(desktopSwitch, true);
    if (removal == Removal::ours) {
        flag(G_KEY_FILE_DESKTOP_KEY_HIDDEN, true);
        flag(removalMark, true);
    }
    gsize length = 0;
    const GText written(g_key_file_to_data(file.get(), &length, nullptr));
    return {written.get(), length};
}

/// Whether a desktop file can hold the path: its text is UTF-8 and of one line.
bool canBeWritten(const fs::path& program) {
    const auto text = program.string();
    return program.is_absolute() && isValidUtf8(text) &&
           std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; });
}

std::string about(const fs::path& path, std::string_view what) {
    return "“" + sanitizedUtf8(path.string()) + "” " + std::string(what);
}

std::string about(const fs::path& path, std::string_view what, const std::error_code& error) {
    return about(path, what) + ": " + error.message() + ".";
}

/// Whether the condition that TryExec makes, a path or a name to be found in PATH, is met.
bool canBeRun(const std::string& tryExec) {
    return tryExec.empty() || GText(g_find_program_in_path(tryExec.c_str()));
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

std::string execValue(std::string_view program) {
    constexpr std::string_view escaped = "\"`$\\";
    std::string value = "\"";
    for (const char c : program) {
        if (escaped.find(c) != std::string_view::npos) {
            value += '\\';
        } else if (c == '%') {
            value += '%';
        }
        value += c;
    }
    return value + '"';
}

std::optional<AutostartFile> parseAutostartFile(std::string_view text,
                                                const std::vector<std::string>& desktops) {
    const KeyFile keys(g_key_file_new());
    if (g_key_file_load_from_data(keys.get(), text.data(), text.size(), G_KEY_FILE_NONE, nullptr) ==
        FALSE) {
        return std::nullopt;
    }
    auto* const file = keys.get();
    const auto exec = textOf(file, G_KEY_FILE_DESKTOP_KEY_EXEC);
    const bool isHidden = flagOf(file, G_KEY_FILE_DESKTOP_KEY_HIDDEN, false);
    // An entry that only says that it is hidden needs nothing else.
    if (!isHidden &&
        (textOf(file, G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION ||
         execProgram(exec).empty())) {
        return std::nullopt;
    }
    const bool isForDesktop =
        lists(file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, desktops).value_or(true) &&
        !lists(file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, desktops).value_or(false);
    AutostartFile entry;
    entry.program = execProgram(exec);
    entry.tryExec = textOf(file, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    entry.isOn = !isHidden && flagOf(file, desktopSwitch, true) && isForDesktop;
    entry.isOurRemoval = isHidden && flagOf(file, removalMark, false);
    return entry;
}

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
    if (!canBeWritten(program_)) {
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
    return write(entryText(program_, Removal::none));
}

std::optional<std::string> AutostartEntry::unregisterItem() {
    if (systemEntryStarts()) {
        if (places_.own.empty()) {
            return std::string(noHome);
        }
        return write(entryText(program_, Removal::ours));
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
