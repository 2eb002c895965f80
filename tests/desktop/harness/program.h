// The program under test as a user runs it: started on a private desktop, watched from outside,
// ended by a signal.
#pragma once

#include "harness/private_desktop.h"
#include "harness/settings_file.h"
#include "harness/wait.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tessellon::desktop {

/// Path of the program under test.
std::filesystem::path programPath();

class Program {
  public:
    /// A user who has been welcomed already, unless the desktop has settings.
    explicit Program(PrivateDesktop& desktop);
    /// Makes the next start the first one ever: without any settings.
    void forgetSettings() const { std::filesystem::remove(settingsFile()); }

    /// What it finds in its environment from its next start on, otherwise than other programs.
    void setEnvironment(const std::string& name, const std::string& value) {
        environment_[name] = value;
    }

    /// Starts it without waiting for anything.
    void launch(std::vector<std::string> arguments = {});
    /// Starts it and waits until its shortcuts are active. Throws when they do not become so.
    void start();

    bool running() { return process_ && process_->running(); }
    Process& process() { return *process_; }

    /// Waits until an instance runs on the desktop.
    bool waitUntilRunning();
    /// Waits until shortcuts are registered.
    bool waitUntilHotKeysActive(std::chrono::milliseconds timeout = patience);
    /// Waits until the program has done all that it was given to do and sleeps.
    void waitUntilIdle();

    /// Asks it to end with SIGTERM.
    ProcessEnd stop();

    std::string standardOutput() const;
    std::string standardError() const;

    std::filesystem::path settingsFile() const;
    std::optional<StoredValues> settings() const { return readSettings(settingsFile()); }
    void change(const StoredValues& values) { changeSettings(settingsFile(), values); }

  private:
    PrivateDesktop& desktop_;
    Environment environment_;
    std::unique_ptr<Process> process_;
};

}  // namespace tessellon::desktop
