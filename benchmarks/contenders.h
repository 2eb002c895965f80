// The ways of moving the active window that are measured against each other: by a program that
// waits for a key, or by a command that is run.
#pragma once

#include "harness/frame.h"
#include "harness/private_desktop.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace tessellon::benchmarks {

/// What a client tells about how it wants to be placed and sized.
struct PlacementHints {
    bool keepsClientCorner = false;  // static gravity: positions mean the client, not the frame
    int cellWidth = 1;
    int cellHeight = 1;
};
PlacementHints placementHints(desktop::XSession& x, xcb_window_t window);

/// One way of moving the active window to one of some places.
class Contender {
  public:
    explicit Contender(std::string name) : name_(std::move(name)) {}
    virtual ~Contender() = default;
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;

    const std::string& name() const { return name_; }

    /// Lets it take part, or has it do nothing at all while others are measured.
    virtual void resume() {}
    virtual void pause() {}

    /// What comes before the moment that counts, that moment, and what is left to do afterwards.
    virtual void prepare() {}
    virtual void start(std::size_t place) = 0;
    virtual void finish(std::size_t place) = 0;

  private:
    std::string name_;
};

/// A running program with one key for each place.
class KeyContender : public Contender {
  public:
    KeyContender(std::string name, desktop::PrivateDesktop& desktop, desktop::Process& process,
                 std::vector<desktop::Key> modifiers, std::vector<desktop::Key> keys);

    void resume() override;
    void pause() override;
    void prepare() override;
    void start(std::size_t place) override;
    void finish(std::size_t place) override;

  private:
    desktop::PrivateDesktop& desktop_;
    desktop::Process& process_;
    std::vector<desktop::Key> modifiers_;
    std::vector<desktop::Key> keys_;
};

/// A command for each place.
class CommandContender : public Contender {
  public:
    CommandContender(std::string name, const desktop::PrivateDesktop& desktop,
                     std::vector<std::vector<std::string>> commands);

    void start(std::size_t place) override;
    void finish(std::size_t place) override;

  private:
    std::vector<std::string> environment_;
    std::vector<std::vector<std::string>> commands_;
    pid_t running_ = -1;
};

/// Lets a process and what it caused come to rest.
void waitUntilQuiet(pid_t process);

}  // namespace tessellon::benchmarks
