#include "platform/x11/window_manager_habits.h"

#include "platform/x11/properties.h"
#include "platform/x11/reply.h"

namespace tessellon::x11 {

WindowManagerHabits habitsOf(std::string_view windowManagerName) {
    const auto is = [&](auto... names) { return ((windowManagerName == names) || ...); };
    // For those that put their version behind the name.
    const auto begins = [&](auto... names) {
        return (windowManagerName.starts_with(names) || ...);
    };
    WindowManagerHabits habits;

    // It announces none, and tells those who ask the same for all windows, framed or not.
    habits.announcesFrameWidths = !is("i3");
    // It leaves the frame out of the gravity of a request.
    habits.positionsMeanTheClient = is("i3");
    // It takes a size alone for a chance to bring the whole window into view.
    habits.pullsInResizedWindows = is("Xfwm4");
    // They hold a window in its tile whatever frame is asked for.
    if (begins("KWin")) {
        habits.tileRelease = TileRelease::byMaximizing;
    } else if (begins("Metacity")) {
        habits.tileRelease = TileRelease::byDragging;
    }

    // A bar is part of their own picture of the screen, and no client to them.
    habits.listsDocks = !is("i3", "JWM");
    // Each monitor shows a desktop of its own, and what is on none of those is unmapped. The others
    // have one current desktop, and the compositing ones keep the rest mapped.
    habits.hasDesktopPerMonitor = is("i3", "bspwm", "awesome", "herbstluftwm", "qtile");

    // They take such a press for nothing of theirs. Those that would move the window themselves
    // must not be told to: some would begin a second move after the first.
    habits.ignoresCommandPress = begins("Openbox", "Fluxbox", "JWM");
    // Now and then nothing comes of a request to begin a move.
    habits.forgetsMoveRequests = begins("Fluxbox");
    // The others ignore a size that is written while they drag the window, or undo it with the next
    // motion. Muffin's name contains that of the one it descends from, and it gets this wrong.
    habits.keepsSizeWhileDragging =
        begins("KWin", "IceWM", "Fluxbox", "JWM", "GNOME Shell", "Mutter") &&
        windowManagerName.find("Muffin") == std::string_view::npos;

    // They grab command keys on the root, stop the keyboard until the next key, and let that one be
    // replayed. The server then leaves out the grabs on the root.
    habits.replaysKeysAfterCommand = begins("IceWM", "Mutter", "GNOME Shell");
    return habits;
}

std::optional<WindowManagerHabits> readHabits(const Connection& connection,
                                              xcb_window_t checkWindow) {
    const auto property = [&](Atom name, std::uint32_t words) {
        return xcb_get_property_unchecked(connection.xcb(), 0, checkWindow, connection.atom(name),
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, words);
    };
    const auto self = property(Atom::netSupportingWmCheck, 1);
    const auto name = property(Atom::netWmName, 64);
    connection.countRoundTrip();
    const Reply<xcb_get_property_reply_t> selfReply(
        xcb_get_property_reply(connection.xcb(), self, nullptr));
    const Reply<xcb_get_property_reply_t> nameReply(
        xcb_get_property_reply(connection.xcb(), name, nullptr));
    if (firstCardinal(rawProperty(selfReply.get())) != checkWindow) {
        return std::nullopt;
    }
    return habitsOf(text(rawProperty(nameReply.get())));
}

}  // namespace tessellon::x11
