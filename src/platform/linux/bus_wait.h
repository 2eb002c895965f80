// Talking to a message bus in a thread that may wait, with a wait that anybody can end: for what
// has to happen before there is a toolkit, and for finding out whether a bus answers at all.
#pragma once

#include "platform/types.h"

#include <memory>
#include <string>
#include <thread>

#include <gio/gio.h>

namespace tessellon {

enum class Bus { session, system };

/// Where the bus listens, as D-Bus writes addresses: what the environment names, else the
/// well-known place. Empty when there is no such bus; none is ever started.
std::string busAddress(Bus bus);

struct UnrefGObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using OpenBus = std::unique_ptr<GDBusConnection, UnrefGObject>;

/// A wait that can be given up from any thread, before it begins or while it lasts.
class BusWait {
  public:
    BusWait() : cancellable_(g_cancellable_new()) {}

    /// Ends every wait that this was given to, now and later.
    void giveUp() { g_cancellable_cancel(cancellable_.get()); }
    GCancellable* get() const { return cancellable_.get(); }

  private:
    std::unique_ptr<GCancellable, UnrefGObject> cancellable_;
};

/// Gives a wait up when its time has passed, unless it goes before that.
class TimeLimit {
  public:
    TimeLimit(BusWait& wait, Seconds limit);

  private:
    std::jthread thread_;
};

/// Opens a connection of its own and waits until the bus has greeted it and answered a question on
/// top of that, since some fall silent in between; null when there is no bus, it refuses, or `wait`
/// was given up.
OpenBus openBus(const std::string& address, const BusWait& wait);

/// Finds out beside the program's thread whether a bus is one that accepts and does not answer.
class BusProbe {
  public:
    /// Begins to ask.
    BusProbe(Bus bus, Seconds limit);

    /// Waits for the finding, until the limit has passed at most. False when there is no bus.
    bool isSilent();

  private:
    BusWait wait_;
    std::jthread thread_;
};

}  // namespace tessellon
