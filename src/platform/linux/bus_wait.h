// Talking to a message bus in a thread that may wait, with a wait that anybody can end: for what
// has to happen before there is a toolkit, and for finding out whether a bus answers at all.
#pragma once

#include <memory>
#include <string>

#include <gio/gio.h>

namespace tessellon {

enum class Bus { session, system };

/// Where the bus listens, as the D-Bus specification writes addresses: what the environment names,
/// else the well-known place. Empty when there is no such bus; none is ever started.
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

/// Opens a connection of its own and waits until the bus has greeted it; null when there is no bus,
/// it refuses, or `wait` was given up.
OpenBus openBus(const std::string& address, const BusWait& wait);

}  // namespace tessellon
