// A well-known name on a bus, asked for and given back without waiting for the bus.
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>

namespace tessellon {

class BusName {
  public:
    enum class WhenTaken {
        giveUp,
        queue,  // and get the name when its owner is gone
    };

    /// Asks for the name. `decided` is called when the bus has said whose it is.
    BusName(const QDBusConnection& connection, const QString& name, WhenTaken whenTaken,
            std::function<void()> decided);
    /// Gives the name back.
    ~BusName();
    BusName(const BusName&) = delete;
    BusName& operator=(const BusName&) = delete;

    const QString& name() const { return name_; }
    /// Whether the bus has answered.
    bool isDecided() const { return isDecided_; }
    /// Whether the name was free when the bus answered.
    bool isOwned() const { return isOwned_; }

  private:
    QDBusConnection connection_;
    QString name_;
    bool isDecided_ = false;
    bool isOwned_ = false;
    std::unique_ptr<QDBusPendingCallWatcher> answer_;
};

}  // namespace tessellon
