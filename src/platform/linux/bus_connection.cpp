#include "platform/linux/bus_connection.h"

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <string>
#include <thread>
#include <utility>

namespace tessellon {

// The library behind QDBusConnection opens all its connections in one thread and waits for that
// thread when the process ends, so it must never meet a bus that accepts and does not answer.
// Whether the bus answers is therefore found out first, with a wait that can be given up.
struct BusConnection::Opening {
    Opening(Bus bus, std::function<void(const QDBusConnection&)> openedIt)
        : address(busAddress(bus)),
          name(QStringLiteral("tessellon-%1").arg(quintptr(this))),
          opened(std::move(openedIt)),
          thread([this] { open(); }) {}

    ~Opening() {
        wait.giveUp();
        thread.join();
        QDBusConnection::disconnectFromBus(name);
    }
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

    void open() {
        if (!openBus(address, wait) || g_cancellable_is_cancelled(wait.get())) {
            return;
        }
        const auto connection =
            QDBusConnection::connectToBus(QString::fromStdString(address), name);
        if (!connection.isConnected()) {
            return;
        }
        QMetaObject::invokeMethod(
            &home, [this] { opened(QDBusConnection(name)); }, Qt::QueuedConnection);
    }

    const std::string address;
    const QString name;
    const std::function<void(const QDBusConnection&)> opened;
    BusWait wait;
    QObject home;  // lives in the thread that is told
    std::thread thread;
};

BusConnection::BusConnection(Bus bus, std::function<void(const QDBusConnection&)> opened)
    : opening_(std::make_unique<Opening>(bus, std::move(opened))) {}

BusConnection::~BusConnection() = default;

}  // namespace tessellon
