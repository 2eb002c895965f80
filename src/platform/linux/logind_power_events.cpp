#include "platform/linux/logind_power_events.h"

#include "platform/linux/sleep_listener.h"

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <thread>
#include <utility>

namespace tessellon {

// Opening the bus waits for its answer, and so does asking who owns a name on it; that is done
// beside the program's thread.
struct LogindPowerEvents::Listening {
    explicit Listening(std::function<void()> woke)
        : listener(std::move(woke)),
          // The bus is opened apart from the one the process may share, so that it can be left.
          connectionName(QStringLiteral("tessellon-logind-%1").arg(quintptr(this))),
          opening([this] {
              QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName)
                  .connect(QStringLiteral("org.freedesktop.login1"),
                           QStringLiteral("/org/freedesktop/login1"),
                           QStringLiteral("org.freedesktop.login1.Manager"),
                           QStringLiteral("PrepareForSleep"), &listener,
                           SLOT(prepareForSleep(bool)));
          }) {}
    ~Listening() {
        opening.join();
        QDBusConnection::disconnectFromBus(connectionName);
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    SleepListener listener;
    QString connectionName;
    std::thread opening;
};

LogindPowerEvents::LogindPowerEvents() = default;
LogindPowerEvents::~LogindPowerEvents() = default;

void LogindPowerEvents::start() {
    if (!listening_) {
        listening_ = std::make_unique<Listening>([this] { didWake_.emit(); });
    }
}

}  // namespace tessellon
