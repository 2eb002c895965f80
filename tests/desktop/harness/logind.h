// The service that tells the programs of a private desktop when the machine sleeps and wakes.
#pragma once

#include "harness/private_desktop.h"

#include <memory>

namespace tessellon::desktop {

class Logind {
  public:
    /// Joins the desktop's bus. Throws std::runtime_error when the bus does not have it.
    explicit Logind(const PrivateDesktop& desktop);
    ~Logind();
    Logind(const Logind&) = delete;
    Logind& operator=(const Logind&) = delete;

    /// Whether a program has asked the bus to hear of the machine's sleep.
    bool isHeard();

    /// Tells everybody that the machine goes to sleep, and that it woke.
    void sleepAndWake();

  private:
    struct Bus;
    std::unique_ptr<Bus> bus_;
};

}  // namespace tessellon::desktop
