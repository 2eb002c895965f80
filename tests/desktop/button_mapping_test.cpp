// Mouse buttons that the user has swapped: what the hardware calls the right one drags windows
// then.
#include "desktop_fixture.h"
#include "ports/real_desktop.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <xcb/xinput.h>

namespace tessellon::desktop {
namespace {

using ButtonMappingTest = DesktopTest;

/// The pointing device that the harness presses the buttons of.
std::optional<std::uint8_t> fakePointer(xcb_connection_t* x) {
    const Reply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        x, xcb_input_xi_query_device(x, XCB_INPUT_DEVICE_ALL), nullptr));
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        const std::string name(xcb_input_xi_device_info_name(each.data), each.data->name_len);
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER &&
            name.find("XTEST") != std::string::npos) {
            return static_cast<std::uint8_t>(each.data->deviceid);
        }
    }
    return std::nullopt;
}

TEST_F(ButtonMappingTest, theLeftButtonIsTheOneThatTheUserHasMadeIt) {
    useDesktop();
    programMayBeGone();
    RealDesktop real(desktop().display());
    real.listen();
    const auto comes = [&](const std::function<bool()>& state) {
        return waitUntil([&] {
            real.serve();
            return state();
        });
    };
    auto& x = desktop().x();
    const auto device = fakePointer(x.connection());
    ASSERT_TRUE(device);
    constexpr std::uint8_t buttons = 10;
    constexpr std::array<std::uint8_t, buttons> straight{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    constexpr std::array<std::uint8_t, buttons> crossed{3, 2, 1, 4, 5, 6, 7, 8, 9, 10};
    const auto mapScreen = [&](const auto& map) {
        const Reply<xcb_set_pointer_mapping_reply_t> reply(xcb_set_pointer_mapping_reply(
            x.connection(), xcb_set_pointer_mapping(x.connection(), buttons, map.data()), nullptr));
        return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
    };
    const auto mapDevice = [&](const auto& map) {
        const Reply<xcb_input_set_device_button_mapping_reply_t> reply(
            xcb_input_set_device_button_mapping_reply(
                x.connection(),
                xcb_input_set_device_button_mapping(x.connection(), *device, buttons, map.data()),
                nullptr));
        return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
    };
    const xcb_window_t clock = startClock({900, 300, 400, 300});
    auto& monitors = real.eventMonitors();
    int drags = 0;
    int ups = 0;
    const auto onDrag =
        monitors.addGlobalMonitor(MonitoredEvent::leftMouseDragged, [&] { ++drags; });
    const auto onUp = monitors.addGlobalMonitor(MonitoredEvent::leftMouseUp, [&] { ++ups; });
    auto& pointer = desktop().pointer();
    struct Hand {
        const char* name;
        const std::array<std::uint8_t, buttons>& ofScreen;
        const std::array<std::uint8_t, buttons>& ofDevice;
        Button left;
        Button right;
    };
    int pressedAt = 1000;
    for (const Hand& hand : {Hand{"screen", crossed, straight, Button::right, Button::left},
                             Hand{"device", straight, crossed, Button::right, Button::left},
                             Hand{"both", crossed, crossed, Button::left, Button::right},
                             Hand{"neither", straight, straight, Button::left, Button::right}}) {
        ASSERT_TRUE(mapScreen(hand.ofScreen)) << hand.name;
        ASSERT_TRUE(mapDevice(hand.ofDevice)) << hand.name;
        const Frame before = desktop().windows().place(clock, {900, 300, 400, 300});
        // The window manager knows of the new mapping and of the place.
        EXPECT_TRUE(comes([&] { return x.windowManagerServes(); }));
        drags = ups = 0;
        // Each time elsewhere, or two presses would be a double click.
        pressedAt += 25;
        pointer.moveTo({pressedAt, 305});
        EXPECT_TRUE(comes([&] { return x.windowManagerServes(); }));
        pointer.press(hand.left);
        EXPECT_TRUE(comes([&] { return monitors.pressedMouseButtons() == 1; })) << hand.name;
        // At the speed of a hand: the window manager is with it at every step.
        for (int moved = 5; moved <= 100; moved += 5) {
            pointer.jumpTo({pressedAt + moved, 305 + moved});
            EXPECT_TRUE(comes([&] { return x.windowManagerServes(); })) << hand.name;
        }
        EXPECT_TRUE(comes([&] { return drags > 0; })) << hand.name;
        const Frame moved{before.x + 100, before.y + 100, before.width, before.height};
        ASSERT_EQ(desktop().windows().settle(clock, moved), moved)
            << hand.name << ": the window manager thinks otherwise";
        pointer.release(hand.left);
        EXPECT_TRUE(comes([&] { return ups == 1; })) << hand.name;
        EXPECT_EQ(monitors.pressedMouseButtons(), 0U);

        drags = 0;
        pointer.jumpTo({1200, 550});
        pointer.press(hand.right);
        EXPECT_TRUE(comes([&] { return monitors.pressedMouseButtons() == 2; })) << hand.name;
        pointer.moveTo({1220, 560});
        pointer.release(hand.right);
        EXPECT_TRUE(comes([&] { return monitors.pressedMouseButtons() == 0; })) << hand.name;
        EXPECT_EQ(drags, 0) << hand.name;
        EXPECT_EQ(ups, 1) << hand.name;
    }
}

}  // namespace
}  // namespace tessellon::desktop
