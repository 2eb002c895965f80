#include "harness/private_desktop.h"

#include "harness/wait.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

namespace tessellon::desktop {
namespace {

namespace fs = std::filesystem;

// A graphics card that does not exist, with outputs that nobody looks at.
constexpr std::string_view outputsConfiguration = R"(Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "Monitor"
    Identifier "any"
    HorizSync 5-1000
    VertRefresh 5-200
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "any"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1920x1080"
    EndSubSection
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
)";

fs::path makeHome() {
    std::string name = (fs::temp_directory_path() / "tessellon-desktop-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for a private desktop");
    }
    return name;
}

std::string fromOurEnvironment(const char* name, const char* otherwise) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : otherwise;
}

// Reads one line from a descriptor that a child writes to; empty when it ends or stays silent.
std::string readLine(int descriptor) {
    std::string line;
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(patience).count();
    while (true) {
        pollfd waiting{descriptor, POLLIN, 0};
        char letter = 0;
        if (poll(&waiting, 1, static_cast<int>(milliseconds)) <= 0 ||
            read(descriptor, &letter, 1) != 1) {
            return {};
        }
        if (letter == '\n') {
            return line;
        }
        line += letter;
    }
}

// Starts a program that announces something in a line on a descriptor, and waits for that line.
// The descriptor's number replaces the empty last argument.
std::pair<std::unique_ptr<Process>, std::string> startAnnouncing(std::vector<std::string> arguments,
                                                                 ProcessOptions options) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe for " + arguments.front());
    }
    arguments.back() += std::to_string(pipe[1]);
    options.inheritedDescriptor = pipe[1];
    std::unique_ptr<Process> process;
    try {
        process = std::make_unique<Process>(arguments, options);
    } catch (...) {
        close(pipe[0]);
        close(pipe[1]);
        throw;
    }
    close(pipe[1]);
    std::string line = readLine(pipe[0]);
    close(pipe[0]);
    if (line.empty()) {
        throw std::runtime_error(arguments.front() + " did not start");
    }
    return {std::move(process), std::move(line)};
}

}  // namespace

PrivateDesktop::PrivateDesktop(const Monitors& monitors,
                               const std::vector<std::string>& serverArguments)
    : monitors_(monitors), home_(makeHome()) {
    const fs::path runtime = home_ / "run";
    fs::create_directories(runtime);
    fs::permissions(runtime, fs::perms::owner_all);
    environment_ = {
        {"PATH", fromOurEnvironment("PATH", "/usr/bin:/bin")},
        {"HOME", home_},
        {"USER", fromOurEnvironment("USER", "user")},
        {"LANG", "C.UTF-8"},
        {"XDG_RUNTIME_DIR", runtime},
        {"XDG_CONFIG_HOME", home_ / ".config"},
        {"XDG_CACHE_HOME", home_ / ".cache"},
        {"XDG_DATA_HOME", home_ / ".local/share"},
        {"XDG_STATE_HOME", home_ / ".local/state"},
        {"XDG_DATA_DIRS", "/usr/local/share:/usr/share"},
        {"XDG_SESSION_TYPE", "x11"},
        // Settings in a plain file and no helpers that would outlive the desktop.
        {"GSETTINGS_BACKEND", "keyfile"},
        {"GIO_USE_VFS", "local"},
        {"NO_AT_BRIDGE", "1"},
    };
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name)) {
            environment_[name] = value;
        }
    }
    startServer(serverArguments);
    startSessionBus();
}

PrivateDesktop::~PrivateDesktop() {
    while (!programs_.empty()) {
        programs_.pop_back();
    }
    docks_.clear();
    compositor_.reset();
    if (windowManager_) {
        // Asked nicely, fluxbox takes more than its time once its clients have gone.
        windowManager_->kill();
    }
    windowManager_.reset();
    session_.reset();
    server_.reset();
    bus_.reset();
    std::error_code ignored;
    fs::remove_all(home_, ignored);
}

std::filesystem::path PrivateDesktop::addProgramFolder(const std::string& name) {
    const fs::path folder = home_ / name;
    fs::create_directories(folder);
    environment_["PATH"] = folder.string() + ":" + environment_["PATH"];
    return folder;
}

ProcessOptions PrivateDesktop::processOptions(const std::string& name) const {
    ProcessOptions options;
    options.environment = environment_;
    options.workingDirectory = home_;
    options.standardOutput = home_ / (name + ".out");
    options.standardError = home_ / (name + ".err");
    return options;
}

std::vector<std::string> PrivateDesktop::serverCommand() {
    if (monitors_.kind == Monitors::Kind::outputs) {
        const fs::path settings = home_ / "xorg.conf";
        std::ofstream(settings) << outputsConfiguration;
        return {"Xorg",      "-config", settings,   "-logfile",    home_ / "Xorg.log",
                "-nolisten", "tcp",     "-noreset", "-novtswitch", "-sharevts"};
    }
    const Frame screen = monitors_.bounds();
    return {"Xvfb",      "-screen",
            "0",         std::to_string(screen.width) + "x" + std::to_string(screen.height) + "x24",
            "-nolisten", "tcp",
            "-noreset"};
}

void PrivateDesktop::startServer(const std::vector<std::string>& serverArguments) {
    auto command = serverCommand();
    const std::string program = command.front();
    command.insert(command.end(), serverArguments.begin(), serverArguments.end());
    command.insert(command.end(), {"-displayfd", ""});
    auto [server, number] = startAnnouncing(std::move(command), processOptions(program));
    server_ = std::move(server);
    display_ = ":" + number;
    environment_["DISPLAY"] = display_;
    session_ = std::make_unique<XSession>(display_);
    windows_.emplace(*session_);
    keyboard_.emplace(*session_);
    pointer_.emplace(*session_);
    if (monitors_.kind == Monitors::Kind::outputs) {
        // Without a keyboard this server numbers keys in an old way.
        run({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us"});
    }
    cables_.emplace(*session_, monitors_, processOptions("xrandr"));
}

void PrivateDesktop::startSessionBus() {
    auto [bus, address] =
        startAnnouncing({"dbus-daemon", "--session", "--nofork", "--print-address="},
                        processOptions("dbus-daemon"));
    bus_ = std::move(bus);
    environment_["DBUS_SESSION_BUS_ADDRESS"] = address;
    // Nothing that runs on the machine is of any concern to the desktop.
    environment_["DBUS_SYSTEM_BUS_ADDRESS"] = address;
}

void PrivateDesktop::describeMonitors() {
    if (!std::exchange(monitorsDescribed_, true)) {
        cables_->show();
    }
}

void PrivateDesktop::launchWindowManager(std::string_view name, WindowManagerKeys keys) {
    const WindowManager& chosen = windowManager(name);
    chosen.configure(home_, keys);
    if (monitors_.kind == Monitors::Kind::outputs ||
        chosen.monitorsDescribed == MonitorsDescribed::beforeStart) {
        describeMonitors();
    }
    windowManager_.reset();
    windowManager_ =
        std::make_unique<Process>(chosen.command, processOptions(std::string(chosen.name)));
    windows_->setWindowManager(chosen);
}

void PrivateDesktop::awaitWindowManager() {
    if (!waitUntil(
            [&] { return session_->windowManagerRuns() && session_->windowManagerServes(); })) {
        throw std::runtime_error("the window manager does not come into charge");
    }
    describeMonitors();
    if (monitors_.kind == Monitors::Kind::outputs) {
        // Some have put them into an order of their own when they started.
        cables_->show();
    }
}

void PrivateDesktop::startWindowManager(std::string_view name, WindowManagerKeys keys) {
    launchWindowManager(name, keys);
    awaitWindowManager();
}

void PrivateDesktop::killWindowManager() {
    windowManager_->kill();
    if (!waitUntil([&] { return !session_->windowManagerRuns(); })) {
        throw std::runtime_error("the window manager is still in charge");
    }
}

void PrivateDesktop::startCompositor() {
    const fs::path settings = home_ / ".config/picom.conf";
    fs::create_directories(settings.parent_path());
    std::ofstream(settings) << "backend = \"xrender\";\nvsync = false;\nshadow = false;\n"
                               "fading = false;\nuse-damage = true;\n";
    compositor_ = std::make_unique<Process>(std::vector<std::string>{"picom", "--config", settings},
                                            processOptions("picom"));
    if (!waitUntil([&] { return session_->selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE; })) {
        throw std::runtime_error("the compositing manager does not come into charge");
    }
}

void PrivateDesktop::killCompositor() {
    compositor_->kill();
    if (!waitUntil([&] { return session_->selectionOwner("_NET_WM_CM_S0") == XCB_WINDOW_NONE; })) {
        throw std::runtime_error("the compositing manager is still in charge");
    }
}

void PrivateDesktop::addDock(std::uint16_t height) {
    addDock({{0, 0, session_->width(), height}});
}

void PrivateDesktop::addDock(const DockPlace& place) {
    docks_.push_back(std::make_unique<Dock>(*session_, place));
}

void PrivateDesktop::removeDocks() {
    const auto remaining = windows_->managed().size() - docks_.size();
    docks_.clear();
    if (!waitUntil([&] { return windows_->managed().size() <= remaining; })) {
        throw std::runtime_error("the window manager still takes care of the docks");
    }
}

Process& PrivateDesktop::start(std::vector<std::string> arguments) {
    const std::string name = fs::path(arguments.front()).filename();
    return *programs_.emplace_back(
        std::make_unique<Process>(std::move(arguments), processOptions(name)));
}

xcb_window_t PrivateDesktop::startWithWindow(std::vector<std::string> arguments) {
    const xcb_window_t window = windows().waitForWindowOf(start(std::move(arguments)).pid());
    // Most new windows get the keyboard, some of them only after they are shown. Whoever activates
    // another window before that would lose it again.
    waitUntil([&] { return windows().active() == window; }, std::chrono::milliseconds{500});
    return window;
}

void PrivateDesktop::run(std::vector<std::string> arguments) {
    const std::string name = fs::path(arguments.front()).filename();
    Process process(std::move(arguments), processOptions(name));
    const auto end = process.waitForEnd(patience);
    if (end != ProcessEnd{.exitCode = EXIT_SUCCESS, .signal = std::nullopt}) {
        throw std::runtime_error(name + " failed");
    }
}

void PrivateDesktop::killServer() {
    server_->kill();
}

}  // namespace tessellon::desktop
