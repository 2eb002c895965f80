#include "platform/linux/logind_power_events.h"

#include "platform/linux/bus_connection.h"
#include "platform/linux/bus_name_owner.h"
#include "platform/linux/sleep_listener.h"

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <memory>
#include <utility>

namespace tessellon {

struct LogindPowerEvents::Listening {
    explicit Listening(std::function<void()> woke)
        : listener(std::move(woke)), bus(Bus::system, [this](const QDBusConnection& connection) {
              logind = std::make_unique<BusNameOwner>(
                  connection, QStringLiteral("org.freedesktop.login1"),
                  [this, connection](const QString& owner) { listenTo(connection, owner); });
          }) {}

    void listenTo(QDBusConnection connection, const QString& owner) {
        const auto path = QStringLiteral("/org/freedesktop/login1");
        const auto interface = QStringLiteral("org.freedesktop.login1.Manager");
        const auto signal = QStringLiteral("PrepareForSleep");
        if (!heard.isEmpty()) {
            connection.disconnect(heard, path, interface, signal, &listener,
                                  SLOT(prepareForSleep(bool)));
        }
        heard = owner;
        if (!heard.isEmpty()) {
            connection.connect(heard, path, interface, signal, &listener,
                               SLOT(prepareForSleep(bool)));
        }
    }

    SleepListener listener;
    QString heard;  // the bus's own name for logind
    std::unique_ptr<BusNameOwner> logind;
    BusConnection bus;
};

LogindPowerEvents::LogindPowerEvents() = default;
LogindPowerEvents::~LogindPowerEvents() = default;

void LogindPowerEvents::start() {
    if (!listening_) {
        listening_ = std::make_unique<Listening>([this] { didWake_.emit(); });
    }
}

}  // namespace tessellon
