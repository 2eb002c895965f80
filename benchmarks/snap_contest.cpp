// One window, moved to and fro between two places by everybody in turn. All are measured by the
// same observer in the same run; while one works, the others are stopped.
#include "contenders.h"
#include "frame_observer.h"
#include "harness/program.h"
#include "harness/wait.h"
#include "sections.h"

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

// Two presses a round, one for each place.
constexpr int rounds = 25;
constexpr double mostOfBareDaemon = 1.25;
constexpr double leastOfCommand = 2.5;

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

struct Samples {
    std::vector<Milliseconds> times;
    int misses = 0;
    int writtenBefore = 0;
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

void measureClient(Report& report, const std::string& title,
                   const std::vector<std::string>& command) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    desktop::Program program(desktop);
    program.start();
    desktop::Process& client = desktop.start(command);
    const xcb_window_t window = desktop.windows().waitForWindowOf(client.pid());
    desktop.windows().activate(window);
    desktop.windows().place(window, places.back());
    const PlacementHints hints = placementHints(desktop.x(), window);
    const auto commands = commandsFor(desktop, window, hints);
    desktop::Process& daemon = desktop.start(daemonCommand(commands));
    bindInOpenbox(desktop, commands);

    const std::vector<Key> ownModifiers{Key::leftControl, Key::leftAlt};
    const std::vector<Key> daemonModifiers{Key::leftControl, Key::leftAlt, Key::leftShift};
    std::deque<Contender> contenders;
    contenders.emplace_back("tessellon", desktop, program.process(), ownModifiers, snapKeys);
    contenders.emplace_back("bare daemon", desktop, daemon, daemonModifiers, bareKeys);
    contenders.emplace_back("wmctrl -r -e, run by a daemon", desktop, daemon, daemonModifiers,
                            wmctrlKeys);
    contenders.emplace_back("wmctrl -r -e, bound in openbox", desktop, daemon, daemonModifiers,
                            boundWmctrlKeys);
    contenders.emplace_back("xdotool windowmove windowsize, run by a daemon", desktop, daemon,
                            daemonModifiers, xdotoolKeys);
    FrameObserver observer(desktop.display());
    observer.watch(window);
    // The first snap creates the settings file, so there is a folder to watch.
    const FolderWatcher settings(program.settingsFile().parent_path());
    for (auto& contender : contenders) {
        contender.pause();
    }

    std::vector<Samples> samples(contenders.size());
    for (int round = -1; round < rounds; ++round) {
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            Contender& contender = contenders[i];
            contender.resume();
            for (std::size_t place = 0; place < places.size(); ++place) {
                contender.prepare();
                waitUntilQuiet(client.pid());
                settings.somethingHappened();
                const Settling settling =
                    observer.measure([&] { contender.start(place); },
                                     {{window, places[place], hints.cellWidth, hints.cellHeight}},
                                     [&] { return settings.somethingHappened(); });
                contender.finish(place);
                waitUntilQuiet(client.pid());
                if (round < 0) {
                    continue;  // everybody's first time is not counted
                }
                samples[i].times.push_back(settling.time);
                samples[i].misses += settling.exact ? 0 : 1;
                samples[i].writtenBefore += settling.probedEarly ? 1 : 0;
            }
            contender.pause();
        }
    }
    for (auto& contender : contenders) {
        contender.resume();
    }

    report.section("From the key press to the window in its frame: " + title);
    const Milliseconds own = median(samples.front().times);
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        const auto& name = contenders[i].name();
        Row row = timeRow(name, samples[i].times);
        if (i > 0) {
            const Milliseconds other = median(samples[i].times);
            const bool isCommand = i > 1;
            row.ratio = isCommand ? "tessellon is " + number(other / own) + " × faster"
                                  : "tessellon takes " + number(own / other) + " ×";
            row.budget = isCommand ? Budget{"≥ " + number(leastOfCommand, 1) + " × faster",
                                            other / own >= leastOfCommand}
                                   : Budget{"≤ " + number(mostOfBareDaemon) + " ×",
                                            own / other <= mostOfBareDaemon};
        }
        report.add(std::move(row));
        if (samples[i].misses > 0) {
            report.note(name + " did not bring the window to its frame " +
                        std::to_string(samples[i].misses) + " of " +
                        std::to_string(samples[i].times.size()) + " times.");
        }
    }
    report.note("Settings written before the window was in its frame: " +
                std::to_string(samples.front().writtenBefore) + " of " +
                std::to_string(samples.front().times.size()) + " presses.");
}

}  // namespace

void measurePressToSettled(Report& report) {
    measureClient(report, "a Qt 6 window", {"/usr/lib/qt6/bin/linguist"});
    measureClient(report, "a GTK 3 window", {"mousepad"});
    measureClient(report, "xterm", {"xterm"});
}

}  // namespace tessellon::benchmarks
