// What the tests of the tray icon share: a desktop, the program's own adapter in this process, and
// what the screen shows where the icon is.
#pragma once

#include "desktop_fixture.h"
#include "harness/tray.h"
#include "ports/real_desktop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <unistd.h>

namespace tessellon::desktop {

inline constexpr double screenWidth = 1920;
inline constexpr double screenHeight = 1080;

/// A block in the middle half of the icon.
inline IconImage block(int size, IconColor color) {
    IconImage image{size, {}};
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const bool isInside =
                x >= size / 4 && x < size - size / 4 && y >= size / 4 && y < size - size / 4;
            image.pixels.push_back(isInside ? 0xff000000 | color : 0);
        }
    }
    return image;
}

class TrayIconTest : public DesktopTest {
  protected:
    void begin() {
        useBareDesktop();
        programMayBeGone();  // this process stands in for it
        desktop().startWindowManager("openbox");
    }
    void showIcon() {
        real = std::make_unique<RealDesktop>(desktop().display());
        real->listen();
        icon = real->makeTrayIcon(block);
        availability = icon->availabilityChanged().subscribe([this] { ++changes; });
        pressed = icon->activated().subscribe([this] { ++presses; });
        icon->setShown(true);
    }
    void TearDown() override {
        icon.reset();
        real.reset();
        DesktopTest::TearDown();
    }

    bool comes(const std::function<bool()>& state) {
        return waitUntil([&] {
            real->serve();
            return state();
        });
    }
    /// Whether the icon is where a bar with a tray at its right end has it.
    bool isIn(TrayPlace place) {
        const auto frame = icon->frame();
        const Rect bar{screenWidth - 100, place == TrayPlace::top ? screenHeight - trayHeight : 0.0,
                       100, trayHeight};
        return frame && frame->width >= 16 && frame->height >= 16 &&
               frame->intersection(bar) == frame;
    }
    /// How light a pixel of the screen is, 0…255; -1 off the screen. The place is counted from the
    /// icon's top left corner.
    int lightness(int right, int down) {
        const auto frame = icon->frame();
        if (!frame) {
            return -1;
        }
        return lightnessAt(static_cast<int>(frame->minX()) + right,
                           static_cast<int>(screenHeight - frame->maxY()) + down);
    }
    int lightnessAt(int x, int y) {
        const Reply<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(desktop().x().connection(),
                                xcb_get_image(desktop().x().connection(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                              desktop().x().root(), static_cast<std::int16_t>(x),
                                              static_cast<std::int16_t>(y), 1, 1, ~0U),
                                nullptr));
        return reply ? xcb_get_image_data(reply.get())[1] : -1;
    }
    int middle() { return static_cast<int>(icon->frame().value_or(Rect{}).width) / 2; }
    bool isDarkOnLight() { return lightness(middle(), middle()) < 60 && lightness(1, 1) > 200; }
    bool isLightOnDark() { return lightness(middle(), middle()) > 200 && lightness(1, 1) < 60; }

    Position iconsMiddle() {
        const auto frame = icon->frame().value_or(Rect{});
        return {static_cast<int>(frame.midX()), static_cast<int>(screenHeight - frame.midY())};
    }
    /// Nothing of ours is left on the desktop when its tray is gone.
    bool liesAround() { return !desktop().windows().unmanagedOf(getpid()).empty(); }

    std::unique_ptr<RealDesktop> real;
    std::unique_ptr<TrayIcon> icon;
    Token availability;
    Token pressed;
    int changes = 0;
    int presses = 0;
};

}  // namespace tessellon::desktop
