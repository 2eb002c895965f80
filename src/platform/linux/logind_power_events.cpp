#include "platform/linux/logind_power_events.h"

#include "platform/linux/bus_connection.h"
#include "platform/linux/sleep_listener.h"

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <utility>

namespace tessellon {

struct LogindPowerEvents::Listening {
    explicit Listening(std::function<void()> woke)
        : listener(std::move(woke)),
          // Listening to a name asks the bus who owns it, and waits for the answer.
          bus(
              Bus::system,
              [this](QDBusConnection& connection) {
                  connection.connect(QStringLiteral("org.freedesktop.login1"),
                                     QStringLiteral("/org/freedesktop/login1"),
                                     QStringLiteral("org.freedesktop.login1.Manager"),
                                     QStringLiteral("PrepareForSleep"), &listener,
                                     SLOT(prepareForSleep(bool)));
              },
              nullptr) {}

    SleepListener listener;
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
