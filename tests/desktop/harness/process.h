// Child processes of the desktop tests: each leads its own process group, dies with the tests, and
// is ended by its process id.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tessellon::desktop {

using Environment = std::map<std::string, std::string>;

struct ProcessOptions {
    Environment environment;
    std::filesystem::path workingDirectory = "/";
    /// Files that receive what the program prints; nothing means the tests' own streams.
    std::optional<std::filesystem::path> standardOutput;
    std::optional<std::filesystem::path> standardError;
    /// Descriptor that the program inherits under the same number.
    std::optional<int> inheritedDescriptor;
};

/// How a process ended: by returning a code, or by a signal.
struct ProcessEnd {
    std::optional<int> exitCode;
    std::optional<int> signal;
    bool operator==(const ProcessEnd&) const = default;
};

class Process {
  public:
    /// Starts a program, searched on PATH. Throws std::runtime_error when it cannot be started.
    Process(std::vector<std::string> arguments, const ProcessOptions& options);
    /// Ends the process group if it still runs: politely first, then not.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return pid_; }
    bool running() { return !poll(); }

    /// Sends a signal to this process alone.
    void signal(int number);

    /// How it ended, or nothing while it still runs after `timeout`.
    std::optional<ProcessEnd> waitForEnd(std::chrono::milliseconds timeout);

    /// Ends it with SIGTERM, and with SIGKILL when it does not obey.
    ProcessEnd stop();

    /// Ends it with SIGKILL, without a chance to tidy up.
    void kill();

  private:
    std::optional<ProcessEnd> poll();
    void signalGroup(int number) const;

    pid_t pid_ = -1;
    std::optional<ProcessEnd> end_;
};

/// The whole of a file; empty when it cannot be read.
std::string fileContents(const std::filesystem::path& path);

/// Whether a program can be found on this process's PATH.
bool programExists(const std::string& name);

}  // namespace tessellon::desktop
