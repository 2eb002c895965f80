// The programs that are measured against each other, each by the press of a key.
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

/// A running program with one key for each of some things that it can do.
class Contender {
  public:
    Contender(std::string name, desktop::PrivateDesktop& desktop, desktop::Process& process,
              std::vector<desktop::Key> modifiers, std::vector<desktop::Key> keys);

    const std::string& name() const { return name_; }

    /// Lets it take part, or has it do nothing at all while others are measured.
    void resume();
    void pause();

    /// What comes before the moment that counts, that moment, and what is left to do afterwards.
    void prepare();
    void start(std::size_t key);
    void finish(std::size_t key);

  private:
    std::string name_;
    desktop::PrivateDesktop& desktop_;
    desktop::Process& process_;
    std::vector<desktop::Key> modifiers_;
    std::vector<desktop::Key> keys_;
};

/// Lets a process and what it caused come to rest.
void waitUntilQuiet(pid_t process);

}  // namespace tessellon::benchmarks
