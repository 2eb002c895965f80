// Waking from sleep, as systemd-logind (or elogind) announces it on the system bus.
#pragma once

#include "platform/power_events.h"

#include <memory>

namespace tessellon {

class LogindPowerEvents : public PowerEvents {
  public:
    LogindPowerEvents();
    ~LogindPowerEvents() override;
    LogindPowerEvents(const LogindPowerEvents&) = delete;
    LogindPowerEvents& operator=(const LogindPowerEvents&) = delete;

    /// Begins to listen; returns at once, whatever the bus does. Once is enough. Without a system
    /// bus, or without logind on it, no event ever comes; logind may join the bus later. A
    /// QCoreApplication must exist, and outlive this object; events come from its loop.
    void start();

  private:
    struct Listening;
    std::unique_ptr<Listening> listening_;
};

}  // namespace tessellon
