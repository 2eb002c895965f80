// A message bus of the test's own, in the place of the system's and the session's, and peers on it
// for the test to play.
#pragma once

#include "half_dead_bus.h"
#include "temporary_folder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <signal.h>

namespace tessellon {

class PrivateBusTest : public testing::Test {
  protected:
    PrivateBusTest() {
        static int argc = 1;
        static char name[] = "linux_test";
        static char* argv[] = {name, nullptr};
        static const QCoreApplication application(argc, argv);
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", busAddress().toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress().toUtf8());
    }
    void TearDown() override {
        for (const QString& name : peers_) {
            QDBusConnection::disconnectFromBus(name);
        }
        continueBus();
        stopBus();
    }

    void startBus() {
        // The session's rules, since the system's let nobody but root play its services.
        bus_.start("dbus-daemon",
                   {"--session", "--nofork", "--print-address", "--address=" + busAddress()});
        ASSERT_TRUE(bus_.waitForReadyRead()) << bus_.errorString().toStdString();
    }

    void stopBus() {
        bus_.kill();
        bus_.waitForFinished();
    }

    /// From now on the bus keeps everybody waiting.
    void pauseBus() { signalBus(SIGSTOP); }
    void continueBus() { signalBus(SIGCONT); }

    /// A bus that lets everybody in and answers calls of those methods of its own, of which every
    /// connection calls Hello first, and nothing else.
    HalfDeadBus& startHalfDeadBus(const std::set<std::string>& answered) {
        halfDead_.reset();
        return halfDead_.emplace(socket().toStdString(), answered);
    }

    /// A bus that accepts whoever comes and never says a word.
    void startSilentBus() {
        QLocalServer::removeServer(socket());
        ASSERT_TRUE(silent_.listen(socket()));
    }
    /// Waits until somebody has called the silent bus.
    bool silentBusIsCalled() {
        return waitFor([&] { return silent_.hasPendingConnections(); });
    }

    QDBusConnection peer(const QString& name) {
        peers_.append(name);
        return QDBusConnection::connectToBus(busAddress(), name);
    }

    static QDBusMessage askBus(QDBusConnection& from, const QString& interface,
                               const QString& method, const QVariantList& arguments = {}) {
        auto message = QDBusMessage::createMethodCall("org.freedesktop.DBus",
                                                      "/org/freedesktop/DBus", interface, method);
        message.setArguments(arguments);
        return from.call(message);
    }

    static QString ownerOf(QDBusConnection& from, const QString& name) {
        const auto reply = askBus(from, "org.freedesktop.DBus", "GetNameOwner", {name});
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments()[0].toString()
                                                          : QString();
    }

    /// Whether the object is taken down well before the bus libraries give up an answer, which they
    /// do after 25 seconds.
    template <typename Object>
    static bool endsAtOnce(std::unique_ptr<Object> object) {
        QElapsedTimer clock;
        clock.start();
        object.reset();
        return !clock.hasExpired(patience);
    }

    /// Runs the loop until `done`; false after ten seconds, also when the loop was held up so long.
    static bool waitFor(const std::function<bool()>& done) {
        QElapsedTimer clock;
        clock.start();
        while (!done()) {
            if (clock.hasExpired(patience)) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return !clock.hasExpired(patience);
    }

  private:
    static constexpr int patience = 10'000;  // milliseconds

    void signalBus(int number) {
        if (bus_.state() == QProcess::Running) {
            ::kill(static_cast<pid_t>(bus_.processId()), number);
        }
    }

    // One address for the whole process: bus libraries ask the environment only once.
    static QString socket() {
        static const TemporaryFolder folder;
        return QString::fromStdString((folder.path() / "bus").string());
    }
    static QString busAddress() { return "unix:path=" + socket(); }

    QProcess bus_;
    QLocalServer silent_;
    std::optional<HalfDeadBus> halfDead_;
    QStringList peers_;
};

}  // namespace tessellon
