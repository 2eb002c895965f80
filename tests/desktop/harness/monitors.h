// The monitors of a private desktop: where they are, and what unplugs them and plugs them in again
// while everything runs.
#pragma once

#include "harness/frame.h"
#include "harness/process.h"
#include "harness/x_session.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

struct Monitor {
    std::string name;
    Frame frame;
};

/// Which monitors a desktop has, the primary one first.
struct Monitors {
    enum class Kind {
        described,  // by hand, on a server whose only output is as large as all of them
        outputs     // of a server with as many outputs as one wants, which can be switched off
    };

    Kind kind = Kind::described;
    /// None: a single monitor of 1920 × 1080, of which nothing is said.
    std::vector<Monitor> all;

    /// Monitors called A, B, C and so on. Some window managers do not ask for such.
    static Monitors described(const std::vector<Frame>& frames);
    /// Outputs, which every window manager knows. Their sizes must be among the usual ones. They
    /// are called DUMMY0, DUMMY1, and so on.
    static Monitors outputs(const std::vector<Frame>& frames);

    static const Monitors one;
    /// L and R, each of 960 × 1080.
    static const Monitors twoSideBySide;

    /// The smallest screen that holds all of them.
    Frame bounds() const;
};

/// Connects and disconnects the monitors of one server.
class MonitorCables {
  public:
    /// Nothing changes before show().
    MonitorCables(XSession& session, Monitors monitors, ProcessOptions processOptions);

    /// Lets the server have those that are connected. Throws when it refuses.
    void show();

    /// Throw for a name that no monitor has.
    void unplug(std::string_view name);
    void plug(std::string_view name);

  private:
    struct Cable {
        Monitor monitor;
        bool connected = true;
    };

    void connect(std::string_view name, bool connected);
    void describe();
    void switchOutputs();

    XSession& x_;
    Monitors::Kind kind_;
    std::vector<Cable> cables_;
    ProcessOptions processOptions_;
};

}  // namespace tessellon::desktop
