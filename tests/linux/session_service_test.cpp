// The program on the session bus, and the second start that asks for it.
#include "platform/linux/session_service.h"

#include "platform/linux/bus_wait.h"
#include "private_bus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <future>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace tessellon {
namespace {

constexpr Seconds patient{10};
constexpr Seconds impatient{0.05};

class SessionServiceTest : public PrivateBusTest {
  protected:
    SessionServiceTest() {
        token_ = service.activated().subscribe([this] { ++activations; });
    }

    bool isOwned(QDBusConnection& from) { return !ownerOf(from, serviceName).isEmpty(); }

    /// What a second start on `display` hears, while this thread goes on serving.
    static bool secondStart(const std::string& display) {
        auto answer = std::async(std::launch::async,
                                 [&] { return activateRunningInstance(display, patient); });
        waitFor(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return answer.get();
    }

    SessionService service{":1"};
    int activations = 0;

  private:
    Token token_;
};

TEST_F(SessionServiceTest, ASecondStartWakesTheInstanceOfItsDisplay) {
    startBus();
    auto asker = peer("asker");
    EXPECT_FALSE(activateRunningInstance(":1", patient)) << "nobody has the name";
    service.start();
    ASSERT_TRUE(waitFor([&] { return isOwned(asker); }));
    EXPECT_TRUE(secondStart(":1"));
    EXPECT_TRUE(waitFor([&] { return activations == 1; }));
    EXPECT_FALSE(secondStart(":2"));
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 1);

    // A desktop names no display.
    auto message = QDBusMessage::createMethodCall(serviceName, servicePath,
                                                  "org.freedesktop.Application", "Activate");
    message << QVariantMap{{"desktop-startup-id", "1"}};
    const auto pending = asker.asyncCall(message);
    EXPECT_TRUE(waitFor([&] { return pending.isFinished() && activations == 2; }));
    EXPECT_FALSE(pending.isError());
}

TEST_F(SessionServiceTest, ATakenNameIsWaitedFor) {
    startBus();
    auto other = peer("other");
    ASSERT_TRUE(other.registerService(serviceName));
    service.start();
    ASSERT_TRUE(waitFor([&] {
        return askBus(other, "org.freedesktop.DBus", "ListQueuedOwners", {serviceName})
                   .arguments()
                   .value(0)
                   .toStringList()
                   .size() == 2;
    }));
    EXPECT_FALSE(activateRunningInstance(":1", patient)) << "the other one knows no Activate";
    ASSERT_TRUE(other.unregisterService(serviceName));
    EXPECT_TRUE(secondStart(":1"));
    EXPECT_TRUE(waitFor([&] { return activations == 1; }));
}

TEST_F(SessionServiceTest, WhoeverHangsIsNotWaitedFor) {
    EXPECT_FALSE(activateRunningInstance(":1", patient)) << "without a bus";
    {
        startBus();
        auto asker = peer("asker");
        service.start();
        ASSERT_TRUE(waitFor([&] { return isOwned(asker); }));
        // Nobody serves the instance while its thread waits here.
        EXPECT_FALSE(activateRunningInstance(":1", impatient));
        stopBus();
    }
    for (const auto& answered : {std::set<std::string>{}, {"Hello"}, {"Hello", "GetId"}}) {
        startHalfDeadBus(answered);
        EXPECT_FALSE(activateRunningInstance(":1", impatient));
    }
    startSilentBus();
    EXPECT_FALSE(activateRunningInstance(":1", impatient));
}

TEST_F(SessionServiceTest, ABusThatIsSlowAtTheStartIsWaitedFor) {
    startBus();
    auto asker = peer("asker");
    pauseBus();
    BusProbe probe(Bus::session, impatient);
    service.start();
    EXPECT_TRUE(probe.isSilent());
    continueBus();
    EXPECT_TRUE(waitFor([&] { return isOwned(asker); }));
    EXPECT_TRUE(secondStart(":1"));
}

TEST_F(SessionServiceTest, ABusThatFallsSilentDelaysNobody) {
    auto& bus = startHalfDeadBus({"Hello", "GetId"});
    auto waiting = std::make_unique<SessionService>(":1");
    waiting->start();
    EXPECT_TRUE(waitFor([&] { return bus.calls("RequestName") > 0; }));
    EXPECT_TRUE(endsAtOnce(std::move(waiting)));
}

TEST_F(SessionServiceTest, SilentIsABusThatDoesNotAnswerAQuestion) {
    EXPECT_FALSE(BusProbe(Bus::session, patient).isSilent()) << "without a bus";
    for (const auto& answered : {std::set<std::string>{}, {"Hello"}}) {
        startHalfDeadBus(answered);
        EXPECT_TRUE(BusProbe(Bus::session, impatient).isSilent());
    }
    startHalfDeadBus({"Hello", "GetId"});
    EXPECT_FALSE(BusProbe(Bus::session, patient).isSilent());
}

}  // namespace
}  // namespace tessellon
