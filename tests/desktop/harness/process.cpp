#include "harness/process.h"

#include "harness/wait.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon::desktop {
namespace {

constexpr int outputMode = 0600;

void redirect(const std::optional<std::filesystem::path>& path, int descriptor) {
    if (!path) {
        return;
    }
    const int file = open(path->c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, outputMode);
    if (file >= 0) {
        dup2(file, descriptor);
    }
}

// Runs in the child between fork and exec; returns only when the program could not be started.
void becomeProgram(const std::vector<std::string>& arguments, const ProcessOptions& options,
                   pid_t parent) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) {
        _exit(EXIT_FAILURE);
    }
    redirect(options.standardOutput, STDOUT_FILENO);
    redirect(options.standardError, STDERR_FILENO);
    if (options.inheritedDescriptor) {
        fcntl(*options.inheritedDescriptor, F_SETFD, 0);
    }
    if (chdir(options.workingDirectory.c_str()) != 0) {
        return;
    }
    std::vector<char*> argv;
    std::vector<std::string> words = arguments;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    std::vector<std::string> settings;
    for (const auto& [name, value] : options.environment) {
        settings.push_back(name + "=" + value);
    }
    std::vector<char*> envp;
    for (std::string& setting : settings) {
        envp.push_back(setting.data());
    }
    envp.push_back(nullptr);
    execvpe(argv.front(), argv.data(), envp.data());
}

}  // namespace

Process::Process(std::vector<std::string> arguments, const ProcessOptions& options) {
    std::array<int, 2> report{};
    if (pipe2(report.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe for a child process");
    }
    const pid_t parent = getpid();
    pid_ = fork();
    if (pid_ == 0) {
        becomeProgram(arguments, options, parent);
        const int error = errno;
        const ssize_t written = write(report[1], &error, sizeof error);
        _exit(written > 0 ? EXIT_FAILURE : EXIT_FAILURE + 1);
    }
    close(report[1]);
    int error = pid_ < 0 ? errno : 0;
    const bool failed = pid_ < 0 || read(report[0], &error, sizeof error) > 0;
    close(report[0]);
    if (failed) {
        if (pid_ > 0) {
            waitpid(pid_, nullptr, 0);
        }
        throw std::runtime_error("cannot start " + arguments.front() + ": " + std::strerror(error));
    }
    setpgid(pid_, pid_);
}

Process::~Process() {
    stop();
}

std::optional<ProcessEnd> Process::poll() {
    if (end_) {
        return end_;
    }
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) == pid_) {
        end_.emplace();
        if (WIFSIGNALED(status)) {
            end_->signal = WTERMSIG(status);
        } else {
            end_->exitCode = WEXITSTATUS(status);
        }
    }
    return end_;
}

void Process::signalGroup(int number) const {
    ::kill(-pid_, number);
}

void Process::signal(int number) {
    if (running()) {
        ::kill(pid_, number);
    }
}

std::optional<ProcessEnd> Process::waitForEnd(std::chrono::milliseconds timeout) {
    waitUntil([this] { return poll().has_value(); }, timeout);
    return end_;
}

ProcessEnd Process::stop() {
    constexpr std::chrono::seconds courtesy{5};
    if (running()) {
        ::kill(pid_, SIGTERM);
        // A stopped process acts on the signal only once it runs again.
        ::kill(pid_, SIGCONT);
        waitForEnd(courtesy);
    }
    signalGroup(SIGKILL);
    waitForEnd(courtesy);
    return end_.value_or(ProcessEnd{});
}

void Process::kill() {
    signalGroup(SIGKILL);
    waitForEnd(patience);
}

std::string fileContents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool programExists(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((folder + "/" + name).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace tessellon::desktop
