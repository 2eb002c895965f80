#include "platform/linux/logind_power_events.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <thread>
#include <utility>

namespace tessellon {
namespace {

/// The object of the program's thread to which the bus delivers the signal.
class SleepListener : public QObject {
    Q_OBJECT

  public:
    explicit SleepListener(std::function<void()> woke) : woke_(std::move(woke)) {}

  public Q_SLOTS:
    // logind says true before it sleeps and false after it woke.
    void prepareForSleep(bool aboutToSleep) {
        if (!aboutToSleep) {
            woke_();
        }
    }

  private:
    std::function<void()> woke_;
};

}  // namespace

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

#include "logind_power_events.moc"
