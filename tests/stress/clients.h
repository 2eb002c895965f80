// The programs whose windows are moved in a stress run: a fixed number of places, each with one
// program that is started again after it has ended, under a title that no other window ever has.
#pragma once

#include "harness/private_desktop.h"
#include "stress/report.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::stress {

/// Stops a process, at a moment at which it does not hold the server: toolkits and window managers
/// do at times, and stopped then they would stop everybody.
void stopProcess(desktop::Process& process, desktop::XSession& x);

struct Client {
    std::size_t place = 0;
    /// In the title of its window, and in no other one's: "client7".
    std::string name;
    std::unique_ptr<desktop::Process> process;
    xcb_window_t window = XCB_WINDOW_NONE;
    bool isStopped = false;
    /// It does not come to the front any more: it asks something, or its window manager died on it.
    /// It is started anew when it is wanted next.
    bool isStuck = false;
    /// Takes every size down to about 200 × 150 pixels.
    bool takesSmallSizes = true;
    bool hasOwnDecorations = false;
};

class Clients {
  public:
    static constexpr std::size_t places = 8;

    Clients(desktop::PrivateDesktop& desktop, Report& report);

    /// The client in a place; nothing when there is none, or none with a window.
    Client* at(std::size_t place);
    /// Starts the program of a place, if it does not run, and waits for its window. Nothing when
    /// that does not come.
    Client* open(std::size_t place);
    /// Ends it without a chance to say good-bye.
    void kill(Client& client);
    /// Asks it to close its window, as the close button does.
    void close(Client& client);
    void stop(Client& client);
    /// Lets every stopped client run again.
    void resumeAll();

    /// Whether one has a menu open, with which it holds the pointer.
    bool showMenu();
    std::vector<std::string> names() const;
    /// The client of a managed window.
    Client* withWindow(xcb_window_t window);
    /// The clients whose windows are at a place on the screen, whatever lies above them.
    std::vector<Client*> under(desktop::Position position);
    /// Whether a client with this name has its window.
    bool isAlive(const std::string& name);

  private:
    bool isAlive(Client& client);
    xcb_window_t findWindow(const Client& client);

    desktop::PrivateDesktop& desktop_;
    Report& report_;
    std::array<std::optional<Client>, places> clients_;
    int started_ = 0;
};

}  // namespace tessellon::stress
