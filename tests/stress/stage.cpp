#include "stress/stage.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <utility>

#include <sys/syscall.h>

namespace tessellon::stress {
namespace {

using desktop::Frame;
using desktop::Key;
using desktop::waitUntil;
using std::chrono::milliseconds;

// How long window managers may take for what they usually do at once; whoever waits goes on
// without it.
constexpr milliseconds windowManagersTime{3000};

/// Whether a sleeping program waits for whatever comes next: in its loop, and for longer than a
/// drop waits for its snap. It also sleeps while one other answers, its window manager mostly, and
/// has not done then what it was given to do. True where the system does not tell.
bool waitsForAnything(pid_t process) {
    constexpr int callOfPoll = SYS_poll;
    constexpr long longestDelay = 60;  // milliseconds
    std::istringstream text(desktop::fileContents("/proc/" + std::to_string(process) + "/syscall"));
    int call = 0;
    std::string address;
    unsigned long descriptors = 0;
    unsigned long timeout = 0;
    if (!(text >> call >> address >> std::setbase(0) >> descriptors >> timeout) ||
        call != callOfPoll) {
        return true;
    }
    const auto wait = static_cast<std::int32_t>(timeout);
    return descriptors > 1 && (wait < 0 || wait > longestDelay);
}

}  // namespace

Stage::Stage(const Options& options, Report& report)
    : report_(report),
      onlyWindowManager_(options.windowManager),
      program_(desktop_),
      clients_(desktop_, report),
      displays_{{0, 0, 1920, 1080}} {
    // Small windows snap, too, and tiling answers.
    program_.change({{"ignoreSmall", false}, {"tilingEnabled", true}});
    report_.note("home " + desktop_.home().string());
    Random random(options.seed);
    startWindowManager(random);
    desktop_.addDock(25);
    for (std::size_t place = 0; place < Clients::places; ++place) {
        clients_.open(place);
    }
    startTray(random);
    startProgram();
}

void Stage::startProgram() {
    program_.launch();
    programShouldRun_ = true;
    ledger_.programStarted();
    report_.count("the program is started");
    require(program_.waitUntilRunning(), "the program runs on the desktop", "it does not come up");
    if (hasWindowManager()) {
        require(program_.waitUntilHotKeysActive(), "the shortcuts become active", "they do not");
    }
    waitUntilQuiet();
}

void Stage::killProgram() {
    report_.count("killed: the program");
    report_.note("program killed");
    programShouldRun_ = false;
    program_.process().kill();
    require(program_.settings().has_value(), "a killed program leaves a whole settings file",
            "it is not there, or no whole property list");
}

void Stage::waitUntilQuiet() {
    if (!programShouldRun_) {
        return;
    }
    using Clock = std::chrono::steady_clock;
    constexpr milliseconds quiet{30};
    desktop_.x().sync();
    const std::filesystem::path statistics =
        "/proc/" + std::to_string(program_.process().pid()) + "/status";
    std::string seen;
    Clock::time_point since = Clock::now();
    const bool rests = waitUntil([&] {
        const std::string status = desktop::fileContents(statistics);
        const auto switches = status.find("voluntary_ctxt_switches");
        const bool sleeps = status.find("State:\tS") != std::string::npos;
        std::string now = switches != std::string::npos ? status.substr(switches) : "";
        if (!sleeps || now != seen || !waitsForAnything(program_.process().pid())) {
            seen = std::move(now);
            since = Clock::now();
        }
        return Clock::now() - since >= quiet || !program_.running();
    });
    require(rests, "the program comes to rest", "it is busy for as long as anybody waits");
}

void Stage::editSettings(const desktop::StoredValues& values) {
    // It stands still meanwhile: what it wrote between our reading and our writing would be lost,
    // as it would be to anybody who edits a file that somebody else writes.
    const bool stops = programShouldRun_ && program_.running();
    waitUntilQuiet();
    if (stops) {
        program_.process().signal(SIGSTOP);
        const std::filesystem::path status =
            "/proc/" + std::to_string(program_.process().pid()) + "/status";
        waitUntil(
            [&] { return desktop::fileContents(status).find("State:\tT") != std::string::npos; });
    }
    program_.change(values);
    if (stops) {
        program_.process().signal(SIGCONT);
    }
    waitUntilQuiet();
    const auto settings = program_.settings();
    for (const auto& [key, value] : values) {
        const bool isKept = settings && settings->contains(key) && settings->at(key) == value;
        require(isKept, "the program keeps what was edited", "'" + key + "' is something else");
    }
}

std::vector<Frame> Stage::pictures() {
    return desktop_.windows().unmanagedOf(program_.process().pid());
}

std::optional<Frame> Stage::pictureOfWidth(int width) {
    for (const Frame& frame : pictures()) {
        if (frame.width == width) {
            return frame;
        }
    }
    return std::nullopt;
}

std::vector<std::string> Stage::unexpectedWords() {
    const std::string all = program_.standardError();
    std::istringstream fresh(all.substr(std::min(heard_, all.size())));
    heard_ = all.size();
    std::vector<std::string> unexpected;
    for (std::string line; std::getline(fresh, line);) {
        const bool isAllowed = std::any_of(
            maySay_.begin(), maySay_.end(),
            [&](const auto& allowed) { return line.find(allowed.first) != std::string::npos; });
        if (!isAllowed) {
            unexpected.push_back(line);
        }
    }
    for (auto phrase = maySay_.begin(); phrase != maySay_.end();) {
        phrase = --phrase->second <= 0 ? maySay_.erase(phrase) : std::next(phrase);
    }
    return unexpected;
}

std::vector<std::string> Stage::windowManagerNames() const {
    if (onlyWindowManager_) {
        return {*onlyWindowManager_};
    }
    // Those that tile or need a graphics card are tested elsewhere.
    std::vector<std::string> names;
    for (const char* const name :
         {"openbox", "xfwm4", "metacity", "icewm", "kwin", "fluxbox", "jwm", "marco"}) {
        for (const auto& known : desktop::windowManagers()) {
            if (known.name == name && desktop::programExists(known.command.front())) {
                names.emplace_back(name);
            }
        }
    }
    return names;
}

bool Stage::hasWindowManager() {
    return windowManagerShouldRun_ && desktop_.windowManagerProcess().running();
}

void Stage::killWindowManager() {
    if (!hasWindowManager()) {
        return;
    }
    report_.count("killed: the window manager");
    report_.note("window manager killed");
    windowManagerShouldRun_ = false;
    desktop_.killWindowManager();
    replaceWindowManagerAfter(0);
}

void Stage::replaceWindowManagerAfter(std::size_t actions) {
    windowManagerComesAfter_ = actions;
}

void Stage::startWindowManager(Random& random) {
    const auto names = windowManagerNames();
    std::string name = random.pick(names);
    for (int attempt = 0;; ++attempt) {
        const bool mustNotSeeMonitors = desktop::windowManager(name).monitorsDescribed ==
                                        desktop::MonitorsDescribed::afterStart;
        if (mustNotSeeMonitors) {
            forgetMonitors();
        }
        try {
            desktop_.launchWindowManager(name);
            windowManagerShouldRun_ = true;
            desktop_.awaitWindowManager();
            if (mustNotSeeMonitors) {
                describeMonitors();
            }
            break;
        } catch (const std::runtime_error& error) {
            report_.note(name + " did not start");
            report_.count("did not start: " + name);
            if (attempt == 2) {
                throw;
            }
            name = names.front();
        }
    }
    report_.note(name + " takes over");
    windowManagerName_ = name;
    report_.count("window manager " + name);
    if (programShouldRun_) {
        require(program_.waitUntilHotKeysActive(),
                "the shortcuts become active when a window manager takes over", "they do not");
        waitUntilQuiet();
    }
}

void Stage::startTray(Random& random) {
    if (hasTray() || !hasWindowManager()) {
        return;
    }
    constexpr std::array kinds{desktop::TrayKind::tint2, desktop::TrayKind::tint2Translucent,
                               desktop::TrayKind::trayer};
    tray_ = &desktop::startTray(desktop_, random.pick(kinds), desktop::TrayPlace::bottom);
    report_.note("tray started");
}

void Stage::killTray() {
    if (!hasTray()) {
        return;
    }
    report_.count("killed: the tray");
    report_.note("tray killed");
    // Not waited for: another one, of a window manager, may take charge at once.
    tray_->kill();
    tray_ = nullptr;
}

bool Stage::hasCompositor() {
    return compositor_ != nullptr && compositor_->running();
}

void Stage::startCompositor() {
    // Some window managers are one themselves.
    if (hasCompositor() || desktop_.x().selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE) {
        return;
    }
    const auto settings = desktop_.home() / ".config/picom.conf";
    std::ofstream(settings) << "backend = \"xrender\";\nvsync = false;\nshadow = false;\n"
                               "fading = false;\nuse-damage = true;\n";
    compositor_ = std::make_unique<desktop::Process>(
        std::vector<std::string>{"picom", "--config", settings}, desktop_.processOptions("picom"));
    waitUntil([&] { return desktop_.x().selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE; },
              windowManagersTime);
    report_.note("compositor started");
}

void Stage::killCompositor() {
    if (!hasCompositor()) {
        return;
    }
    report_.count("killed: the compositor");
    report_.note("compositor killed");
    compositor_->kill();
    compositor_.reset();
}

void Stage::restartBus() {
    report_.count("killed: the session bus");
    (bus_ ? *bus_ : desktop_.busProcess()).kill();
    std::string address = desktop_.environment().at("DBUS_SESSION_BUS_ADDRESS");
    address = address.substr(0, address.find(','));
    bus_.reset();
    bus_ = std::make_unique<desktop::Process>(
        std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--address=" + address},
        desktop_.processOptions("dbus-daemon"));
    // Whoever needs it now may have ended with it.
    waitUntil([&] { return !hasWindowManager(); }, milliseconds{100});
}

struct Stage::Layout {
    struct Monitor {
        const char* name;
        const char* geometry;
        const char* output;
        Frame frame;
    };
    std::vector<Monitor> monitors;
};

const std::vector<Stage::Layout>& Stage::layouts() {
    static const std::vector<Layout> table{
        {{}},
        {{{"L", "960/254x1080/286+0+0", "screen", {0, 0, 960, 1080}},
          {"R", "960/254x1080/286+960+0", "none", {960, 0, 960, 1080}}}},
        {{{"L", "1280/338x1080/286+0+0", "screen", {0, 0, 1280, 1080}},
          {"R", "640/169x1080/286+1280+0", "none", {1280, 0, 640, 1080}}}},
        {{{"L", "960/254x1080/286+960+0", "screen", {960, 0, 960, 1080}},
          {"R", "960/254x540/143+0+0", "none", {0, 0, 960, 540}},
          {"B", "960/254x540/143+0+540", "none", {0, 540, 960, 540}}}}};
    return table;
}

void Stage::changeDisplays(Random& random) {
    report_.count("displays changed");
    report_.note("displays changed");
    layout_ = random.below(layouts().size());
    forgetMonitors();
    describeMonitors();
}

void Stage::forgetMonitors() {
    for (const std::string& name : monitors_) {
        desktop_.run({"xrandr", "--delmonitor", name});
    }
    monitors_.clear();
}

void Stage::describeMonitors() {
    displays_.clear();
    for (const auto& monitor : layouts()[layout_].monitors) {
        desktop_.run({"xrandr", "--setmonitor", monitor.name, monitor.geometry, monitor.output});
        monitors_.emplace(monitor.name);
        displays_.push_back(monitor.frame);
    }
    if (displays_.empty()) {
        displays_ = {{0, 0, 1920, 1080}};
    }
}

bool Stage::activate(Client& client) {
    if (!hasWindowManager()) {
        return false;
    }
    auto& windows = desktop_.windows();
    if (windows.active() == client.window && windows.isShown(client.window)) {
        return true;
    }
    constexpr std::uint32_t sourcePager = 2;
    desktop_.x().tellRoot(client.window, "_NET_ACTIVE_WINDOW",
                          {sourcePager, desktop_.x().serverTime(), 0, 0, 0});
    const bool came = waitUntil(
        [&] { return windows.active() == client.window && windows.isShown(client.window); },
        windowManagersTime);
    if (!came) {
        report_.count("window managers that did not bring a window to the front");
        client.isStuck = true;
    }
    return came;
}

Client* Stage::activeClient() {
    const auto active = desktop_.windows().active();
    return active ? clients_.withWindow(*active) : nullptr;
}

void Stage::mayRestoreActive() {
    askedToRestore_ = true;
    if (const Client* const client = activeClient()) {
        ledger_.mayForget(client->name);
    } else {
        activeMayHaveChanged();
    }
}

void Stage::activeMayHaveChanged() {
    if (!askedToRestore_) {
        return;
    }
    for (const std::string& name : clients_.names()) {
        ledger_.mayForget(name);
    }
}

void Stage::settleForgetting() {
    if (askedToRestore_) {
        mayRestoreActive();
        askedToRestore_ = false;
    }
}

void Stage::letGo() {
    if (desktop_.pointer().isDown(desktop::Button::left)) {
        desktop_.pointer().release();
    }
    constexpr int bitsPerByte = 8;
    const desktop::Reply<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(
        desktop_.x().connection(), xcb_query_keymap(desktop_.x().connection()), nullptr));
    for (int code = 0; keys && code < bitsPerByte * static_cast<int>(sizeof keys->keys); ++code) {
        const unsigned bits = keys->keys[code / bitsPerByte];
        if ((bits >> static_cast<unsigned>(code % bitsPerByte) & 1U) != 0) {
            desktop_.keyboard().release(static_cast<Key>(code));
        }
    }
}

void Stage::isDragged(const Client& client) {
    constexpr int actionsUntilItKnows = 3;
    if (client.hasOwnDecorations) {
        draggedByItself_ = actionsUntilItKnows;
    }
}

void Stage::recover(Random& random) {
    draggedByItself_ = std::max(0, draggedByItself_ - 1);
    letGo();
    clients_.resumeAll();
    if (windowManagerShouldRun_ && !desktop_.windowManagerProcess().running()) {
        report_.count("window managers that ended by themselves");
        report_.note("the window manager ended by itself");
        windowManagerShouldRun_ = false;
        replaceWindowManagerAfter(0);
    }
    if (windowManagerComesAfter_ && (*windowManagerComesAfter_)-- == 0) {
        windowManagerComesAfter_.reset();
        startWindowManager(random);
    }
    if (!programShouldRun_) {
        startProgram();
    }
}

}  // namespace tessellon::stress
