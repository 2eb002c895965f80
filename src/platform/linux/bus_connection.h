// A connection to a message bus that is opened beside the program's thread: however long the bus
// takes, nobody waits for it, neither at the start nor at the end.
#pragma once

#include "platform/linux/bus_wait.h"

#include <QDBusConnection>
#include <functional>
#include <memory>

namespace tessellon {

class BusConnection {
  public:
    /// Begins to open a connection that is shared with nobody, and returns. `opened` is called with
    /// it from the loop of the thread that made this object, as soon as the bus answers; never when
    /// there is no bus. A QCoreApplication must exist, and outlive this object.
    BusConnection(Bus bus, std::function<void(const QDBusConnection&)> opened);
    /// Closes the connection, or gives up opening it.
    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

  private:
    struct Opening;
    std::unique_ptr<Opening> opening_;
};

}  // namespace tessellon
