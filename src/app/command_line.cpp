#include "app/command_line.h"

namespace tessellon {

CommandLine parseCommandLine(std::span<const char* const> arguments) {
    using Request = CommandLine::Request;
    CommandLine result;
    for (const std::string_view argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            return {Request::help, {}};
        }
        if (argument == "--version") {
            return {Request::version, {}};
        }
        if (result.request != Request::mistake) {
            result = {Request::mistake, "unknown argument '" + std::string(argument) +
                                            "'; 'tessellon --help' lists what there is"};
        }
    }
    return result;
}

std::string_view helpText() {
    return "Usage: tessellon [--help | --version]\n"
           "\n"
           "Puts the windows of other programs where you want them. Runs on an X11 session with\n"
           "any window manager that follows EWMH, with an item in the tray, until it is told to\n"
           "end (Quit in its panel, SIGTERM or Ctrl+C). Started again, it opens the panel of the\n"
           "one that runs: the way to it on a desktop without a tray.\n"
           "\n"
           "  -h, --help     show this text\n"
           "      --version  show the version\n"
           "\n"
           "Drag a window with Super held, before or during the drag, and drop it on a zone.\n"
           "Press the right Super key and / for the launcher: pick a snap, or type its name.\n"
           "\n"
           "Some of the shortcuts it starts with (Ctrl+Alt held, and):\n"
           "  arrow keys     left, right, top or bottom half; again for other widths\n"
           "  U I J K        quarters\n"
           "  D F G          thirds\n"
           "  E T            left and right two thirds\n"
           "  Return         maximize, with Shift almost\n"
           "  C              center\n"
           "  Backspace      the frame from before the first snap\n"
           "  Super+arrows   next and previous display\n"
           "\n"
           "Settings are kept in $XDG_CONFIG_HOME/tessellon/defaults.plist\n"
           "(~/.config/tessellon/defaults.plist).\n";
}

}  // namespace tessellon
