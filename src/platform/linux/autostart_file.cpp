#include "platform/linux/autostart_file.h"

#include "base/text.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/key_file.h"

#include <algorithm>

namespace tessellon {
namespace {

/// How desktops that leave the file otherwise alone switch an entry off.
constexpr const char* desktopSwitch = "X-GNOME-Autostart-enabled";
/// Tells an entry that we have switched off from one that the user has.
constexpr const char* removalMark = "X-Tessellon-Removed";

}  // namespace

std::optional<AutostartFile> parseAutostartFile(std::string_view text,
                                                const std::vector<std::string>& desktops) {
    const auto file = KeyFile::parse(text);
    if (!file) {
        return std::nullopt;
    }
    const bool isHidden = file->flag(G_KEY_FILE_DESKTOP_KEY_HIDDEN).value_or(false);
    AutostartFile entry;
    entry.program = execProgram(file->text(G_KEY_FILE_DESKTOP_KEY_EXEC));
    // An entry that only says that it is hidden needs nothing else.
    if (!isHidden &&
        (file->text(G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION ||
         entry.program.empty())) {
        return std::nullopt;
    }
    entry.tryExec = file->text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    const bool isForDesktop =
        isForDesktops(file->list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN),
                      file->list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN), desktops);
    entry.isOn = !isHidden && file->flag(desktopSwitch).value_or(true) && isForDesktop;
    entry.isOurRemoval = isHidden && file->flag(removalMark).value_or(false);
    return entry;
}

std::string autostartText(const std::filesystem::path& program, AutostartPurpose purpose) {
    KeyFile file;
    file.setText(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    file.setText(G_KEY_FILE_DESKTOP_KEY_VERSION, "1.5");
    file.setText(G_KEY_FILE_DESKTOP_KEY_NAME, "Tessellon");
    file.setText(G_KEY_FILE_DESKTOP_KEY_COMMENT, "Puts windows where you want them");
    file.setText(G_KEY_FILE_DESKTOP_KEY_ICON, "app.tessellon.Tessellon");
    file.setText(G_KEY_FILE_DESKTOP_KEY_EXEC, execValue(program.string()));
    file.setText(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, program.string());
    file.setFlag(G_KEY_FILE_DESKTOP_KEY_TERMINAL, false);
    file.setFlag(G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY, false);
    file.setFlag(desktopSwitch, true);
    if (purpose == AutostartPurpose::removal) {
        file.setFlag(G_KEY_FILE_DESKTOP_KEY_HIDDEN, true);
        file.setFlag(removalMark, true);
    }
    return file.written();
}

bool canBeInAutostartFile(const std::filesystem::path& program) {
    const auto text = program.string();
    return program.is_absolute() && isValidUtf8(text) &&
           std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; });
}

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

}  // namespace tessellon
