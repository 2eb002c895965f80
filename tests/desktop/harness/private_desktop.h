// A desktop of its own for one test: an X server without a screen, a home folder, a bus, a
// window manager and programs, all of which are gone when it goes.
#pragma once

#include "harness/desktop_windows.h"
#include "harness/dock.h"
#include "harness/keyboard.h"
#include "harness/monitors.h"
#include "harness/pointer.h"
#include "harness/process.h"
#include "harness/window_manager.h"
#include "harness/x_session.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

class PrivateDesktop {
  public:
    /// Starts the server and the session bus. Throws std::runtime_error when something does not
    /// start. `serverArguments` come on top of those that every server gets.
    explicit PrivateDesktop(const Monitors& monitors = Monitors::one,
                            const std::vector<std::string>& serverArguments = {});
    ~PrivateDesktop();
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    const std::filesystem::path& home() const { return home_; }
    const std::string& display() const { return display_; }
    /// What programs of this desktop find in their environment.
    const Environment& environment() const { return environment_; }

    /// Puts a folder of the home folder first among those that programs are looked for in by what
    /// starts from now on. Gives its path; it is made when it is not there.
    std::filesystem::path addProgramFolder(const std::string& name);

    XSession& x() { return *session_; }
    DesktopWindows& windows() { return windows_.value(); }
    Keyboard& keyboard() { return keyboard_.value(); }
    Pointer& pointer() { return pointer_.value(); }

    /// Starts a window manager without waiting for it.
    void launchWindowManager(std::string_view name,
                             WindowManagerKeys keys = WindowManagerKeys::released);
    /// Waits until the window manager that was started is in charge.
    void awaitWindowManager();
    /// Starts a window manager and waits until it is in charge.
    void startWindowManager(std::string_view name,
                            WindowManagerKeys keys = WindowManagerKeys::released);
    /// Ends the window manager without a chance to say good-bye.
    void killWindowManager();
    Process& windowManagerProcess() { return *windowManager_; }

    Process& serverProcess() { return *server_; }

    /// What the session bus and the system's are.
    Process& busProcess() { return *bus_; }

    /// Starts a compositing manager, which shows windows through each other, and waits until it is
    /// in charge.
    void startCompositor();
    /// Ends the compositing manager without a chance to say good-bye.
    void killCompositor();

    /// Shows a bar at the top and waits until the window manager knows it.
    void addDock(std::uint16_t height);
    /// The same anywhere.
    void addDock(const DockPlace& place);
    /// Takes all bars away and waits until the window manager knows it.
    void removeDocks();

    /// Throw for a name that none of the monitors has.
    void unplug(std::string_view monitor) { cables_->unplug(monitor); }
    void plug(std::string_view monitor) { cables_->plug(monitor); }

    /// Starts a program on this desktop; it ends with the desktop at the latest.
    Process& start(std::vector<std::string> arguments);
    /// Starts a program and waits for its window.
    xcb_window_t startWithWindow(std::vector<std::string> arguments);

    /// Runs a program to its end. Throws when it fails.
    void run(std::vector<std::string> arguments);

    /// Takes the X server away from under everybody.
    void killServer();

    /// Options for a program of this desktop, with its output in files of the home folder.
    ProcessOptions processOptions(const std::string& name) const;

  private:
    std::vector<std::string> serverCommand();
    void startServer(const std::vector<std::string>& serverArguments);
    void startSessionBus();
    void describeMonitors();

    Monitors monitors_;
    bool monitorsDescribed_ = false;
    std::filesystem::path home_;
    std::string display_;
    Environment environment_;
    std::unique_ptr<Process> server_;
    std::unique_ptr<Process> bus_;
    std::unique_ptr<XSession> session_;
    std::optional<DesktopWindows> windows_;
    std::optional<Keyboard> keyboard_;
    std::optional<Pointer> pointer_;
    std::optional<MonitorCables> cables_;
    std::unique_ptr<Process> windowManager_;
    std::unique_ptr<Process> compositor_;
    std::vector<std::unique_ptr<Dock>> docks_;
    std::vector<std::unique_ptr<Process>> programs_;
};

}  // namespace tessellon::desktop
