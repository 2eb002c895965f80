// The program as an application on the session bus, which desktops activate by its name, and the
// question with which a second start wakes the one that runs (XDG desktop entries, D-Bus
// activation).
#pragma once

#include "base/signal.h"
#include "platform/types.h"

#include <memory>
#include <string>

namespace tessellon {

inline constexpr const char* serviceName = "app.tessellon.Tessellon";
inline constexpr const char* servicePath = "/app/tessellon/Tessellon";

/// Entry of the platform data with which a second start names its display.
inline constexpr const char* platformDataDisplay = "app.tessellon.display";

class SessionService {
  public:
    /// `display` as DISPLAY names it.
    explicit SessionService(std::string display);
    ~SessionService();
    SessionService(const SessionService&) = delete;
    SessionService& operator=(const SessionService&) = delete;

    /// Begins to take the name; returns at once, whatever the bus does. Once is enough. Without a
    /// bus nobody ever calls; while an instance on another display has the name, that one is
    /// called, and this one when the other is gone. A QCoreApplication must exist, and outlive this
    /// object; events come from its loop.
    void start();

    /// Emitted when somebody wants to see the program.
    const Signal<>& activated() const { return activated_; }

  private:
    struct OnBus;

    std::string display_;
    Signal<> activated_;
    std::unique_ptr<OnBus> onBus_;
};

/// Asks the instance that has the name to show itself, and waits for its answer, for `limit` at
/// most. False when there is none, it runs on another display, or nobody answered. Starts nothing,
/// and needs no toolkit.
bool activateRunningInstance(const std::string& display, Seconds limit);

}  // namespace tessellon
