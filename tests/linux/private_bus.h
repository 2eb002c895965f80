// A message bus of the test's own, in the place of the system's and the session's, and peers on it
// for the test to play.
#pragma once

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

#include <gtest/gtest.h>

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

    /// Runs the loop until `done`; false after ten seconds.
    static bool waitFor(const std::function<bool()>& done) {
        QElapsedTimer clock;
        clock.start();
        while (!done()) {
            if (clock.elapsed() > 10'000) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return true;
    }

  private:
    // One address for the whole process: bus libraries ask the environment only once.
    static QString socket() {
        static const TemporaryFolder folder;
        return QString::fromStdString((folder.path() / "bus").string());
    }
    static QString busAddress() { return "unix:path=" + socket(); }

    QProcess bus_;
    QLocalServer silent_;
    QStringList peers_;
};

}  // namespace tessellon
