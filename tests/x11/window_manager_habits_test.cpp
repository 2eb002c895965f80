// Which window managers are known by their names to do things otherwise than the rest.
#include "platform/x11/window_manager_habits.h"

#include <gtest/gtest.h>

namespace tessellon::x11 {
namespace {

TEST(WindowManagerHabits, UnknownNamesHaveNoneInParticular) {
    for (const auto* name : {"", "dwm", "Compiz", "xfwm4", "i3-gaps", "bspwm2", "My Mutter"}) {
        EXPECT_EQ(habitsOf(name), WindowManagerHabits{}) << name;
    }
}

TEST(WindowManagerHabits, AVersionMayFollowTheName) {
    EXPECT_EQ(habitsOf("IceWM 3.3.1 (Linux 6.1.0/x86_64)"), habitsOf("IceWM"));
    EXPECT_TRUE(habitsOf("IceWM 3.3.1 (Linux 6.1.0/x86_64)").replaysKeysAfterCommand);
    EXPECT_EQ(habitsOf("Openbox 3.6"), habitsOf("Openbox"));
    EXPECT_TRUE(habitsOf("Openbox 3.6").ignoresCommandPress);
    EXPECT_EQ(habitsOf("Metacity 3.46").tileRelease, TileRelease::byDragging);
    EXPECT_EQ(habitsOf("KWin 5.27").tileRelease, TileRelease::byMaximizing);
}

TEST(WindowManagerHabits, DescendantsAreNotWhatTheyDescendFrom) {
    const auto mutter = habitsOf("Mutter");
    EXPECT_EQ(habitsOf("GNOME Shell"), mutter);
    EXPECT_TRUE(mutter.keepsSizeWhileDragging && mutter.replaysKeysAfterCommand);
    EXPECT_FALSE(habitsOf("Mutter (Muffin)").keepsSizeWhileDragging);
    EXPECT_TRUE(habitsOf("Mutter (Muffin)").replaysKeysAfterCommand);
    EXPECT_EQ(habitsOf("Metacity (Marco)").tileRelease, TileRelease::byDragging);
    EXPECT_EQ(habitsOf("Marco"), WindowManagerHabits{});
}

TEST(WindowManagerHabits, OneNameMayHaveSeveral) {
    const auto i3 = habitsOf("i3");
    EXPECT_FALSE(i3.announcesFrameWidths || i3.listsDocks);
    EXPECT_TRUE(i3.positionsMeanTheClient && i3.hasDesktopPerMonitor);
    const auto jwm = habitsOf("JWM");
    EXPECT_FALSE(jwm.listsDocks);
    EXPECT_TRUE(jwm.ignoresCommandPress && jwm.keepsSizeWhileDragging);
}

}  // namespace
}  // namespace tessellon::x11
