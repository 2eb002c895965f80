// The desktop's list of status notifier items, whoever keeps it at the moment, and whether anybody
// shows what is on it; for StatusNotifierItem alone. Nothing here waits for the bus.
#pragma once

#include "platform/linux/bus_name_owner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <functional>

namespace tessellon {

class StatusNotifierWatcher : public QObject {
    Q_OBJECT

  public:
    struct Listeners {
        /// Somebody else keeps the list now; it is empty.
        std::function<void()> began;
        /// hasHost() has changed.
        std::function<void()> hostChanged;
    };
    StatusNotifierWatcher(const QDBusConnection& connection, Listeners listeners);

    /// Whether there is a list, and a host that shows what is on it.
    bool hasHost() const { return hasHost_; }

    /// Puts the item that the bus knows by this name on the list. Does nothing while nobody keeps
    /// one.
    void add(const QString& service);

  private:
    Q_SLOT void askForHost();

    void setOwner(const QString& owner);
    void setHasHost(bool hasHost);
    void beginListening();
    void endListening();
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage&)> answered);

    QDBusConnection connection_;
    Listeners listeners_;
    QString owner_;  // the bus's own name for the connection that keeps the list
    bool hasHost_ = false;
    std::uint64_t questions_ = 0;  // about the host; answers to all but the last are old
    BusNameOwner keeper_;
};

}  // namespace tessellon
