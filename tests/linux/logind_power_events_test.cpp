// Waking, with a bus of the test's own on which the test plays logind.
#include "platform/linux/logind_power_events.h"

#include "private_bus.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QMap>
#include <QStringList>
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class LogindPowerEventsTest : public PrivateBusTest {
  protected:
    LogindPowerEventsTest() {
        woke_ = events.didWake().subscribe([this] { ++wakes; });
    }

    /// Returns when the bus has passed the signal on.
    static void announce(QDBusConnection& from, bool aboutToSleep) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep");
        signal << aboutToSleep;
        from.send(signal);
        EXPECT_EQ(askBus(from, "org.freedesktop.DBus", "GetId").type(), QDBusMessage::ReplyMessage);
    }

    /// Whether somebody has asked the bus for such signals.
    static bool isAskedFor(QDBusConnection& from, const QString& name) {
        const QDBusMessage reply =
            askBus(from, "org.freedesktop.DBus.Debug.Stats", "GetAllMatchRules");
        if (reply.type() != QDBusMessage::ReplyMessage) {
            ADD_FAILURE() << reply.errorMessage().toStdString();
            return true;
        }
        const auto rules = qdbus_cast<QMap<QString, QStringList>>(reply.arguments().constFirst());
        return std::ranges::any_of(
            rules, [&](const QStringList& ofOne) { return !ofOne.filter(name).isEmpty(); });
    }

    static bool isHeard(QDBusConnection& from) { return isAskedFor(from, "PrepareForSleep"); }

    LogindPowerEvents events;
    int wakes = 0;

  private:
    Token woke_;
};

TEST_F(LogindPowerEventsTest, EachWakingIsToldOnceAndOnlyByLogind) {
    startBus();
    events.start();
    events.start();
    QDBusConnection logind = peer("logind");
    QDBusConnection stranger = peer("stranger");
    ASSERT_TRUE(waitFor([&] { return isAskedFor(logind, "NameOwnerChanged"); }));
    ASSERT_TRUE(logind.registerService("org.freedesktop.login1")) << "logind may come later";
    ASSERT_TRUE(waitFor([&] { return isHeard(logind); }));
    announce(stranger, false);
    announce(logind, true);
    announce(logind, false);
    ASSERT_TRUE(waitFor([&] { return wakes > 0; }));
    EXPECT_EQ(wakes, 1);
    announce(logind, true);
    announce(logind, false);
    ASSERT_TRUE(waitFor([&] { return wakes > 1; }));
    EXPECT_EQ(wakes, 2);

    ASSERT_TRUE(logind.unregisterService("org.freedesktop.login1"));
    ASSERT_TRUE(waitFor([&] { return !isHeard(logind); }));
    ASSERT_TRUE(stranger.registerService("org.freedesktop.login1")) << "it was restarted";
    ASSERT_TRUE(waitFor([&] { return isHeard(logind); }));
    announce(logind, false);
    announce(stranger, false);
    ASSERT_TRUE(waitFor([&] { return wakes > 2; }));
    EXPECT_EQ(wakes, 3);
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

TEST_F(LogindPowerEventsTest, ABusThatNeverAnswersDelaysNobody) {
    startSilentBus();
    auto waiting = std::make_unique<LogindPowerEvents>();
    waiting->start();
    events.start();
    EXPECT_TRUE(silentBusIsCalled());
    EXPECT_TRUE(endsAtOnce(std::move(waiting)));
    EXPECT_EQ(wakes, 0);
}

TEST_F(LogindPowerEventsTest, ABusThatFallsSilentDelaysNobody) {
    const std::vector<std::string> methods{"Hello", "GetId", "GetNameOwner"};
    std::set<std::string> answered;
    for (const auto& next : methods) {
        auto& bus = startHalfDeadBus(answered);
        auto waiting = std::make_unique<LogindPowerEvents>();
        waiting->start();
        EXPECT_TRUE(waitFor([&] { return bus.calls(next) > 0; })) << next;
        EXPECT_TRUE(endsAtOnce(std::move(waiting))) << next;
        answered.insert(next);
    }
}

}  // namespace
}  // namespace tessellon
