#include "snap_contest.h"

#include "contenders.h"
#include "frame_observer.h"
#include "harness/program.h"
#include "harness/wait.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sys/inotify.h>
#include <unistd.h>

namespace tessellon::benchmarks {
namespace {

using desktop::Edges;
using desktop::Frame;
using desktop::Key;
using desktop::PrivateDesktop;

// The upper left quarter and the right half of 1920 × 1080 with gaps of 8.
constexpr std::array<Frame, 2> places{{{8, 8, 948, 528}, {964, 8, 948, 1064}}};

/// Tells whether anything happened to the files in a folder.
class FolderWatcher {
  public:
    explicit FolderWatcher(const std::filesystem::path& folder)
        : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        if (inotify_add_watch(descriptor_, folder.c_str(),
                              IN_CREATE | IN_MODIFY | IN_MOVED_TO | IN_DELETE) < 0) {
            close(descriptor_);
            throw std::runtime_error("cannot watch " + folder.string());
        }
    }
    ~FolderWatcher() { close(descriptor_); }
    FolderWatcher(const FolderWatcher&) = delete;
    FolderWatcher& operator=(const FolderWatcher&) = delete;

    /// True when something happened since the last call.
    bool somethingHappened() const {
        std::array<char, 4096> buffer{};
        bool happened = false;
        while (read(descriptor_, buffer.data(), buffer.size()) > 0) {
            happened = true;
        }
        return happened;
    }

  private:
    int descriptor_;
};

/// The keys of a contender, one for each place.
using Keys = std::vector<Key>;
const Keys snapKeys{Key::u, Key::right};
const Keys bareKeys{Key::u, Key::right};
const Keys wmctrlKeys{Key::i, Key::j};
const Keys xdotoolKeys{Key::k, Key::d};
const Keys boundWmctrlKeys{Key::e, Key::f};

std::string joined(std::initializer_list<int> numbers, char separator) {
    std::string result;
    for (const int number : numbers) {
        result += (result.empty() ? "" : std::string(1, separator)) + std::to_string(number);
    }
    return result;
}

/// The commands for one place. Each gets the numbers that bring the visible frame there, so that
/// nobody is measured on the way to another place.
struct Commands {
    std::string wmctrl;
    std::string xdotool;
};

std::vector<Commands> commandsFor(PrivateDesktop& desktop, xcb_window_t window,
                                  const PlacementHints& hints) {
    const auto extents = desktop.x().values(window, "_NET_FRAME_EXTENTS");
    if (extents.size() < 4) {
        throw std::runtime_error("the window has no frame");
    }
    const Edges edges{static_cast<int>(extents[0]), static_cast<int>(extents[1]),
                      static_cast<int>(extents[2]), static_cast<int>(extents[3])};
    std::vector<Commands> commands;
    for (const Frame& place : places) {
        const Frame client = shrunk(place, edges);
        const Frame& corner = hints.keepsClientCorner ? client : place;
        commands.push_back({"wmctrl -r :ACTIVE: -e " +
                                joined({1, place.x, place.y, client.width, client.height}, ','),
                            "xdotool getactivewindow windowmove " +
                                joined({corner.x, corner.y}, ' ') + " windowsize " +
                                joined({client.width, client.height}, ' ')});
    }
    return commands;
}

/// One daemon for its own moves and for the commands.
std::vector<std::string> daemonCommand(const std::vector<Commands>& commands) {
    const auto code = [](Key key) { return std::to_string(static_cast<int>(key)); };
    std::vector<std::string> words{BARE_DAEMON_PATH};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Frame& place = places[i];
        words.insert(words.end(),
                     {"move", code(bareKeys[i]), std::to_string(place.x), std::to_string(place.y),
                      std::to_string(place.width), std::to_string(place.height)});
        words.insert(words.end(), {"run", code(wmctrlKeys[i]), commands[i].wmctrl});
        words.insert(words.end(), {"run", code(xdotoolKeys[i]), commands[i].xdotool});
    }
    return words;
}

/// Has the window manager itself run the commands, as users bind them there.
void bindInOpenbox(PrivateDesktop& desktop, const std::vector<Commands>& commands) {
    const std::array<std::string, places.size()> names{"C-A-S-e", "C-A-S-f"};
    std::string bindings = "<keyboard>";
    for (std::size_t i = 0; i < places.size(); ++i) {
        bindings += "<keybind key=\"" + names[i] + "\"><action name=\"Execute\"><command>" +
                    commands[i].wmctrl + "</command></action></keybind>";
    }
    const auto file = desktop.home() / ".config/openbox/rc.xml";
    std::string settings = desktop::fileContents(file);
    const std::string none = "<keyboard/>";
    const auto at = settings.find(none);
    if (at == std::string::npos) {
        throw std::runtime_error("the window manager's settings are not as expected");
    }
    settings.replace(at, none.size(), bindings + "</keyboard>");
    std::ofstream(file) << settings;
    desktop.windowManagerProcess().signal(SIGUSR2);  // reads its settings again
    const bool bound = desktop::waitUntil([&] {
        return desktop.x().combinationIsHeld(
            static_cast<std::uint8_t>(boundWmctrlKeys.front()),
            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT);
    });
    if (!bound) {
        throw std::runtime_error("the window manager does not take its keys");
    }
}

struct Entry {
    Rival rival;
    Contender contender;
};

/// Everybody who can be started by a key on this desktop, the program first.
std::deque<Entry> entries(PrivateDesktop& desktop, desktop::Process& program,
                          desktop::Process& daemon, bool boundKeys) {
    const std::vector<Key> ownModifiers{Key::leftControl, Key::leftAlt};
    const std::vector<Key> daemonModifiers{Key::leftControl, Key::leftAlt, Key::leftShift};
    std::deque<Entry> result;
    const auto enter = [&](Rival rival, desktop::Process& process, const Keys& keys) {
        const auto& modifiers = rival == Rival::tessellon ? ownModifiers : daemonModifiers;
        result.push_back(
            {rival, Contender(std::string(nameOf(rival)), desktop, process, modifiers, keys)});
    };
    enter(Rival::tessellon, program, snapKeys);
    enter(Rival::bareDaemon, daemon, bareKeys);
    enter(Rival::wmctrl, daemon, wmctrlKeys);
    enter(Rival::xdotool, daemon, xdotoolKeys);
    if (boundKeys) {
        enter(Rival::boundWmctrl, daemon, boundWmctrlKeys);
    }
    return result;
}

}  // namespace

std::string_view nameOf(Rival rival) {
    switch (rival) {
        case Rival::tessellon:
            return "tessellon";
        case Rival::bareDaemon:
            return "bare daemon";
        case Rival::wmctrl:
            return "`wmctrl`";
        case Rival::xdotool:
            return "`xdotool`";
        case Rival::boundWmctrl:
            return "`wmctrl`, bound in openbox";
    }
    return {};
}

SnapContest holdSnapContest(const std::string& windowManager, std::vector<std::string> command,
                            int rounds) {
    PrivateDesktop desktop;
    desktop.startWindowManager(windowManager);
    desktop::Program program(desktop);
    program.start();
    desktop::Process& client = desktop.start(std::move(command));
    const xcb_window_t window = desktop.windows().waitForWindowOf(client.pid());
    desktop.windows().activate(window);
    desktop.windows().place(window, places.back());
    const PlacementHints hints = placementHints(desktop.x(), window);
    const auto commands = commandsFor(desktop, window, hints);
    desktop::Process& daemon = desktop.start(daemonCommand(commands));
    const bool isOpenbox = windowManager == "openbox";
    if (isOpenbox) {
        bindInOpenbox(desktop, commands);
    }
    FrameObserver observer(desktop.display());
    observer.watch(window);
    // The first snap creates the settings file, so there is a folder to watch.
    const FolderWatcher settings(program.settingsFile().parent_path());
    auto all = entries(desktop, program.process(), daemon, isOpenbox);
    for (auto& entry : all) {
        entry.contender.pause();
    }

    SnapContest contest;
    contest.processorTime.add("tessellon", {program.process().pid()});
    contest.processorTime.add("window manager", {desktop.windowManagerProcess().pid()});
    contest.processorTime.add("X server", {desktop.serverProcess().pid()});
    contest.processorTime.add("the window's program", {client.pid()});
    for (int round = -1; round < rounds; ++round) {
        for (auto& [rival, contender] : all) {
            contender.resume();
            for (std::size_t place = 0; place < places.size(); ++place) {
                contender.prepare();
                waitUntilQuiet(client.pid());
                settings.somethingHappened();
                const bool counts = round >= 0;  // everybody's first time does not
                const bool isOurs = rival == Rival::tessellon;
                if (counts && isOurs) {
                    contest.processorTime.start();
                }
                const Settling settling = observer.measure(
                    [&, &each = contender] { each.start(place); },
                    {{window, places.at(place), hints.cellWidth, hints.cellHeight}},
                    [&] { return settings.somethingHappened(); });
                waitUntilQuiet(client.pid());
                if (counts && isOurs) {
                    contest.processorTime.stop();
                }
                contender.finish(place);
                waitUntilQuiet(client.pid());
                if (counts) {
                    auto& result = contest.results[rival];
                    result.times.push_back(settling.time);
                    result.misses += settling.exact ? 0 : 1;
                    contest.writtenBefore += isOurs && settling.probedEarly ? 1 : 0;
                }
            }
            contender.pause();
        }
    }
    for (auto& entry : all) {
        entry.contender.resume();
    }
    return contest;
}

}  // namespace tessellon::benchmarks
