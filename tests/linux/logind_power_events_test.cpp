// Waking, with a bus of the test's own on which the test plays logind.
#include "platform/linux/logind_power_events.h"

#include "temporary_folder.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QMap>
#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

// One address for the whole process: the bus library asks the environment only once.
QString busAddress() {
    static const TemporaryFolder folder;
    return "unix:path=" + QString::fromStdString((folder.path() / "bus").string());
}

class LogindPowerEventsTest : public testing::Test {
  protected:
    LogindPowerEventsTest() {
        static int argc = 1;
        static char name[] = "linux_test";
        static char* argv[] = {name, nullptr};
        static const QCoreApplication application(argc, argv);
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", busAddress().toUtf8());
        woke_ = events.didWake().subscribe([this] { ++wakes; });
    }
    void TearDown() override {
        for (const QString& name : peers_) {
            QDBusConnection::disconnectFromBus(name);
        }
        stopBus();
    }

    void startBus() {
        // The session's rules, since the system's let nobody but root play logind.
        bus_.start("dbus-daemon",
                   {"--session", "--nofork", "--print-address", "--address=" + busAddress()});
        ASSERT_TRUE(bus_.waitForReadyRead()) << bus_.errorString().toStdString();
    }

    void stopBus() {
        bus_.kill();
        bus_.waitForFinished();
    }

    QDBusConnection peer(const QString& name) {
        peers_.append(name);
        return QDBusConnection::connectToBus(busAddress(), name);
    }

    static QDBusMessage askBus(QDBusConnection& from, const QString& interface,
                               const QString& method) {
        return from.call(QDBusMessage::createMethodCall(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", interface, method));
    }

    /// Returns when the bus has passed the signal on.
    static void announce(QDBusConnection& from, bool aboutToSleep) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep");
        signal << aboutToSleep;
        from.send(signal);
        EXPECT_EQ(askBus(from, "org.freedesktop.DBus", "GetId").type(), QDBusMessage::ReplyMessage);
    }

    /// True once somebody has asked the bus for the signal and for who sends it.
    static bool isHeard(QDBusConnection& from) {
        const QDBusMessage reply =
            askBus(from, "org.freedesktop.DBus.Debug.Stats", "GetAllMatchRules");
        if (reply.type() != QDBusMessage::ReplyMessage) {
            ADD_FAILURE() << reply.errorMessage().toStdString();
            return true;
        }
        const auto rules = qdbus_cast<QMap<QString, QStringList>>(reply.arguments().constFirst());
        return std::ranges::any_of(rules, [](const QStringList& ofOne) {
            return !ofOne.filter("PrepareForSleep").isEmpty() &&
                   !ofOne.filter("NameOwnerChanged").isEmpty();
        });
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

    LogindPowerEvents events;
    int wakes = 0;

  private:
    Token woke_;
    QProcess bus_;
    QStringList peers_;
};

TEST_F(LogindPowerEventsTest, EachWakingIsToldOnceAndOnlyByLogind) {
    startBus();
    events.start();
    events.start();
    QDBusConnection logind = peer("logind");
    QDBusConnection stranger = peer("stranger");
    ASSERT_TRUE(waitFor([&] { return isHeard(logind); }));
    ASSERT_TRUE(logind.registerService("org.freedesktop.login1")) << "logind may come later";
    announce(stranger, false);
    announce(logind, true);
    announce(logind, false);
    ASSERT_TRUE(waitFor([&] { return wakes > 0; }));
    EXPECT_EQ(wakes, 1);
    announce(logind, true);
    announce(logind, false);
    ASSERT_TRUE(waitFor([&] { return wakes > 1; }));
    EXPECT_EQ(wakes, 2);
}

TEST_F(LogindPowerEventsTest, NothingHappensWithoutABus) {
    const LogindPowerEvents unused;
    events.start();
    LogindPowerEvents another;
    another.start();
    QCoreApplication::processEvents();
    EXPECT_EQ(wakes, 0);
}

TEST_F(LogindPowerEventsTest, ABusThatEndsIsForgiven) {
    startBus();
    QDBusConnection logind = peer("logind");
    ASSERT_TRUE(logind.registerService("org.freedesktop.login1"));
    events.start();
    ASSERT_TRUE(waitFor([&] { return isHeard(logind); }));
    announce(logind, false);
    ASSERT_TRUE(waitFor([&] { return wakes == 1; }));
    stopBus();
    ASSERT_TRUE(waitFor([&] { return !logind.isConnected(); }));
    EXPECT_EQ(wakes, 1);
}

}  // namespace
}  // namespace tessellon
