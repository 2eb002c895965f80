// The chord that opens the launcher: which keys it takes, and how its tap is kept alive.
#include "launcher/right_command_slash.h"

#include "platform/key_event.h"
#include "platform/memory/memory_event_taps.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using namespace modifier_flag;

constexpr auto chord = command | rightCommand;

class RightCommandSlashTest : public testing::Test {
  protected:
    RightCommandSlashTest() { trigger.start(); }

    enum class Repeat { no, yes };

    bool press(std::uint64_t flags, Repeat repeat = Repeat::no) {
        return taps.press({virtual_key::slash, flags, repeat == Repeat::yes});
    }

    MemoryEventTaps taps;
    int triggered = 0;
    RightCommandSlash trigger{taps, [this] { ++triggered; }};
};

TEST_F(RightCommandSlashTest, OnlyTheBareChordIsTaken) {
    for (const auto flags : {std::uint64_t{0}, command, rightCommand, chord | shift, chord | option,
                             chord | control}) {
        EXPECT_FALSE(press(flags)) << std::hex << flags;
    }
    EXPECT_EQ(triggered, 0);

    constexpr std::uint64_t capsLock = 0x10000;
    constexpr std::uint64_t leftCommand = 0x8;
    constexpr std::uint64_t function = 0x800000;
    EXPECT_TRUE(press(chord));
    EXPECT_TRUE(press(chord | capsLock | leftCommand | function));
    EXPECT_EQ(triggered, 2);
}

TEST_F(RightCommandSlashTest, RepeatsAreSwallowedWithoutATrigger) {
    EXPECT_TRUE(press(chord));
    EXPECT_TRUE(press(chord, Repeat::yes));
    EXPECT_TRUE(press(chord, Repeat::yes));
    EXPECT_EQ(triggered, 1);
}

TEST_F(RightCommandSlashTest, OneTapIsInstalledUntilStop) {
    trigger.start();
    EXPECT_EQ(taps.tapCount(), 1U);
    trigger.stop();
    trigger.stop();
    EXPECT_EQ(taps.tapCount(), 0U);
    EXPECT_FALSE(press(chord));
}

TEST_F(RightCommandSlashTest, ATapThatIsSwitchedOffIsSwitchedOnAtTheNotice) {
    taps.disableAll(MemoryEventTaps::Notice::given);
    EXPECT_TRUE(press(chord));
    EXPECT_EQ(taps.madeCount(), 1);
}

TEST_F(RightCommandSlashTest, TheHealthCheckRepairs) {
    trigger.checkHealth();
    EXPECT_EQ(taps.madeCount(), 1) << "a healthy tap stays";

    taps.disableAll(MemoryEventTaps::Notice::lost);
    trigger.checkHealth();
    EXPECT_TRUE(press(chord));
    EXPECT_EQ(taps.madeCount(), 1);

    taps.keepDisabled(true);
    taps.disableAll(MemoryEventTaps::Notice::lost);
    trigger.checkHealth();
    EXPECT_EQ(taps.madeCount(), 2) << "one that stays off is made anew";
    taps.keepDisabled(false);

    taps.invalidateAll();
    taps.refuse(true);
    trigger.checkHealth();
    EXPECT_EQ(taps.tapCount(), 0U);
    taps.refuse(false);
    trigger.checkHealth();
    EXPECT_TRUE(press(chord));
}

}  // namespace
}  // namespace tessellon
