#include "platform/linux/desktop_entry.h"

#include "platform/linux/glib_text.h"
#include "platform/linux/key_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <memory>
#include <vector>

#include <glib.h>

namespace tessellon {
namespace {

// clang-format off
constexpr auto genericLaunchers = std::to_array<std::string_view>({
    "ash", "bash", "busybox", "bwrap", "dash", "dbus-launch", "electron", "env", "exo-open",
    "firejail", "fish", "flatpak", "gamescope", "gdb", "gio", "gjs", "gjs-console", "gtk-launch",
    "java", "javaws", "kioclient", "kstart", "ksh", "love", "lua", "mono", "nice", "nohup", "node",
    "nodejs", "perl", "php", "pkexec", "prime-run", "python", "pypy", "qemu-x86_64", "ruby", "sh",
    "snap", "steam", "sudo", "systemd-run", "tclsh", "wine", "wine64-preloader", "wine-preloader",
    "wish", "x-terminal-emulator", "xdg-open", "zsh",
});
// clang-format on

std::vector<std::string> shellWords(const std::string& text) {
    int count = 0;
    char** words = nullptr;
    if (g_shell_parse_argv(text.c_str(), &count, &words, nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<char*, decltype(&g_strfreev)> owned(words, &g_strfreev);
    return {words, words + count};
}

/// The place of the program among the words of a command line that may begin with env(1).
std::vector<std::string>::const_iterator findProgram(const std::vector<std::string>& words) {
    const auto isEnv = [](const std::string& word) {
        return word == "env" || word.ends_with("/env");
    };
    auto word = words.begin();
    if (word == words.end() || !isEnv(*word)) {
        return word;
    }
    for (++word; word != words.end(); ++word) {
        const bool takesNext = *word == "-u" || *word == "-C";
        const bool isOption = word->starts_with('-');
        if (!isOption && word->find('=') == std::string::npos) {
            return word;
        }
        if (takesNext && ++word == words.end()) {
            break;
        }
    }
    return word;
}

/// The lines that matter. Desktop files consist mostly of translations of other keys, and parsing
/// those would take several times as long as the rest.
std::string relevantLines(std::string_view text) {
    constexpr std::string_view keys[] = {"Type",           "Name",      "Exec",   "TryExec",
                                         "StartupWMClass", "NoDisplay", "Hidden", "Icon",
                                         "OnlyShowIn",     "NotShowIn"};
    std::string result;
    bool isInGroup = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
        const auto line = text.substr(0, end);
        text.remove_prefix(end);
        if (line.starts_with('[')) {
            isInGroup = line.starts_with("[Desktop Entry]");
        }
        const auto key = line.substr(0, std::min(line.find_first_of("[ \t="), line.size()));
        if (isInGroup && (line.starts_with('[') ||
                          std::find(std::begin(keys), std::end(keys), key) != std::end(keys))) {
            result += line;
        }
    }
    return result;
}

/// Whether a word of a command line stands for what the launcher puts in its place ("%U").
bool isFieldCode(const std::string& word) {
    return word.size() == 2 && word[0] == '%';
}

std::string unlessGeneric(std::string program) {
    return isGenericLauncher(program) ? std::string() : std::move(program);
}

}  // namespace

std::string execProgram(std::string_view exec) {
    const auto words = shellWords(std::string(exec));
    const auto program = findProgram(words);
    return program != words.end() ? *program : std::string();
}

bool isGenericLauncher(std::string_view program) {
    auto name = program.substr(program.rfind('/') + 1);
    const auto isIn = [](std::string_view text) {
        return std::find(genericLaunchers.begin(), genericLaunchers.end(), text) !=
               genericLaunchers.end();
    };
    if (isIn(name)) {
        return true;
    }
    // Without a version, as in "python3.11" or "electron25".
    while (!name.empty() && (name.back() == '.' || name.back() == '-' ||
                             (name.back() >= '0' && name.back() <= '9'))) {
        name.remove_suffix(1);
    }
    return isIn(name);
}

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text) {
    const auto file = KeyFile::parse(relevantLines(text));
    if (!file || file->text(G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION) {
        return std::nullopt;
    }
    DesktopEntry entry;
    entry.name = file->localText(G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.plainName = file->text(G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.icon = file->localText(G_KEY_FILE_DESKTOP_KEY_ICON);
    entry.startupWmClass = file->text(G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    const auto words = shellWords(file->text(G_KEY_FILE_DESKTOP_KEY_EXEC));
    const auto program = findProgram(words);
    if (program != words.end() && !isFieldCode(*program)) {
        entry.program = unlessGeneric(*program);
    }
    entry.execWords =
        static_cast<int>(std::count_if(words.begin(), words.end(), std::not_fn(isFieldCode)));
    entry.tryExec = file->text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    entry.tryProgram = unlessGeneric(entry.tryExec);
    entry.onlyShowIn = file->list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    entry.notShowIn = file->list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    entry.noDisplay = file->flag(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY).value_or(false);
    entry.hidden = file->flag(G_KEY_FILE_DESKTOP_KEY_HIDDEN).value_or(false);
    return entry;
}

bool isForDesktops(const std::optional<std::vector<std::string>>& onlyShowIn,
                   const std::optional<std::vector<std::string>>& notShowIn,
                   const std::vector<std::string>& desktops) {
    const auto names = [&desktops](const std::vector<std::string>& list) {
        return std::find_first_of(list.begin(), list.end(), desktops.begin(), desktops.end()) !=
               list.end();
    };
    return (!onlyShowIn || names(*onlyShowIn)) && !(notShowIn && names(*notShowIn));
}

bool isShown(const DesktopEntry& entry, const std::vector<std::string>& desktops) {
    return !entry.hidden && !entry.noDisplay && !entry.name.empty() &&
           isForDesktops(entry.onlyShowIn, entry.notShowIn, desktops);
}

bool canBeRun(const std::string& tryExec) {
    return tryExec.empty() || GText(g_find_program_in_path(tryExec.c_str()));
}

}  // namespace tessellon
