// The icon in a tray of the tests' own, which does what the protocol allows and trays at hand do
// not: colors, other depths, giving the icon back.
#include "tray_fixture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr std::string_view traySelection = "_NET_SYSTEM_TRAY_S0";

/// A visual of 32 bits; the server of the tests has one.
xcb_visualid_t visualWithAlpha(xcb_connection_t* connection) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0;
         xcb_depth_next(&depths)) {
        const auto visuals = xcb_depth_visuals_iterator(depths.data);
        if (depths.data->depth == 32 && visuals.rem > 0) {
            return visuals.data->visual_id;
        }
    }
    return XCB_NONE;
}

/// A bar that is all tray, 100 pixels below the top of the screen.
class SelfMadeTray {
  public:
    enum class Depth { ofScreen, withAlpha };
    static constexpr std::int16_t top = 100;

    SelfMadeTray(const std::string& display, std::uint32_t background,
                 Depth depth = Depth::ofScreen)
        : x_(display), bar_(xcb_generate_id(x_.connection())) {
        xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
        std::uint8_t bits = XCB_COPY_FROM_PARENT;
        xcb_create_window_value_list_t values{};
        std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT;
        if (depth == Depth::withAlpha) {
            visual = visualWithAlpha(x_.connection());
            bits = 32;
            values.colormap = xcb_generate_id(x_.connection());
            xcb_create_colormap(x_.connection(), XCB_COLORMAP_ALLOC_NONE, values.colormap,
                                x_.root(), visual);
            mask |= XCB_CW_COLORMAP;
        }
        values.background_pixel = 0xff000000 | background;
        values.override_redirect = 1;
        xcb_create_window_aux(x_.connection(), bits, bar_, x_.root(), 0, top, 200, 60, 0,
                              XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, mask, &values);
        xcb_map_window(x_.connection(), bar_);
        xcb_set_selection_owner(x_.connection(), bar_, x_.atom(traySelection), XCB_CURRENT_TIME);
        xcb_flush(x_.connection());
    }

    XSession& x() { return x_; }
    xcb_window_t bar() const { return bar_; }

    /// Tells everybody that it is ready.
    void announce() {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = x_.root();
        message.type = x_.atom("MANAGER");
        message.data.data32[1] = x_.atom(traySelection);
        message.data.data32[2] = bar_;
        xcb_send_event(x_.connection(), 0, x_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(x_.connection());
    }

    /// The window that asks to be taken in, once it has; earlier ones have been thrown away.
    std::optional<xcb_window_t> asking() {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(x_.connection())}) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE &&
                message.type == x_.atom("_NET_SYSTEM_TRAY_OPCODE") && message.data.data32[1] == 0) {
                ++requests_;
                icon_ = message.data.data32[2];
            }
        }
        return icon_;
    }
    int requests() const { return requests_; }

    void takeIn(xcb_window_t icon) {
        icon_.reset();
        xcb_reparent_window(x_.connection(), icon, bar_, 8, 8);
        xcb_map_window(x_.connection(), icon);
        xcb_flush(x_.connection());
    }
    void resize(xcb_window_t icon, std::uint32_t width, std::uint32_t height) {
        const std::array<std::uint32_t, 2> size{width, height};
        xcb_configure_window(x_.connection(), icon,
                             XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
        xcb_flush(x_.connection());
    }
    void giveBack(xcb_window_t icon) {
        xcb_reparent_window(x_.connection(), icon, x_.root(), 0, 0);
        xcb_flush(x_.connection());
    }
    /// Foreground, error, warning and success, of which the icon needs the first.
    void offerColor(std::uint32_t gray) {
        std::vector<std::uint32_t> colors(12, gray << 8U);
        x_.setValues(bar_, "_NET_SYSTEM_TRAY_COLORS", "CARDINAL", colors);
        xcb_flush(x_.connection());
    }

  private:
    XSession x_;
    xcb_window_t bar_;
    std::optional<xcb_window_t> icon_;
    int requests_ = 0;
};

class TrayProtocolTest : public TrayIconTest {
  protected:
    void begin(std::uint32_t background,
               SelfMadeTray::Depth depth = SelfMadeTray::Depth::ofScreen) {
        TrayIconTest::begin();
        tray = std::make_unique<SelfMadeTray>(desktop().display(), background, depth);
    }
    void TearDown() override {
        TrayIconTest::TearDown();
        tray.reset();
    }
    /// Waits for the icon to ask, and takes it in.
    xcb_window_t takeIn() {
        EXPECT_TRUE(comes([&] { return tray->asking().has_value(); }));
        const auto window = tray->asking().value_or(XCB_WINDOW_NONE);
        tray->takeIn(window);
        return window;
    }
    bool hasTone(int low, int high) {
        const int is = lightness(middle(), middle());
        return is >= low && is <= high;
    }

    std::unique_ptr<SelfMadeTray> tray;
};

TEST_F(TrayProtocolTest, theTraysColorIsTakenAndFollowed) {
    begin(0x202020);
    tray->offerColor(0x90);
    tray->announce();
    showIcon();
    takeIn();
    EXPECT_TRUE(comes([&] { return hasTone(0x90, 0x90); }));
    tray->offerColor(0xc0);
    EXPECT_TRUE(comes([&] { return hasTone(0xc0, 0xc0); }));
    tray->offerColor(0x22);
    EXPECT_TRUE(comes([&] { return hasTone(0xf0, 0xff); })) << "nobody could see that";
}

TEST_F(TrayProtocolTest, theIconFillsTheSizeItIsGiven) {
    begin(0x202020);
    showIcon();
    const auto window = takeIn();
    for (const auto& [width, height] : {std::pair(16U, 16U), {32U, 32U}, {22U, 50U}, {60U, 24U}}) {
        tray->resize(window, width, height);
        const Rect expected{8, screenHeight - SelfMadeTray::top - 8 - height,
                            static_cast<double>(width), static_cast<double>(height)};
        EXPECT_TRUE(comes([&] { return icon->frame() == expected; }));
        const int side = static_cast<int>(std::min(width, height));
        const int x = static_cast<int>(width) / 2;
        const int y = static_cast<int>(height) / 2;
        // The block is as wide as high, and nothing of an earlier size is left.
        EXPECT_TRUE(comes([&] {
            return lightness(x, y) > 200 && lightness(x - side / 2 + 1, y) < 60 &&
                   lightness(x, y - side / 2 + 1) < 60 && lightness(1, 1) < 60 &&
                   lightness(x - side / 5, y) > 200 && lightness(x, y + side / 5) > 200;
        })) << width
            << " x " << height;
    }
    tray->resize(window, 1, 1);
    EXPECT_TRUE(comes([&] { return icon->frame().value_or(Rect{}).width == 1; }));
    tray->resize(window, 1500, 1500);
    EXPECT_TRUE(comes([&] { return icon->frame().value_or(Rect{}).width == 1500; }));
}

TEST_F(TrayProtocolTest, aParentWithAlphaShowsThroughThoughItDidNotSaySo) {
    begin(0xeceff4, SelfMadeTray::Depth::withAlpha);
    showIcon();
    const auto first = takeIn();
    const auto second = takeIn();
    EXPECT_NE(first, second) << "a window cannot change its depth";
    EXPECT_TRUE(comes([&] { return isDarkOnLight(); }));
    EXPECT_FALSE(tray->x().exists(first));
}

TEST_F(TrayProtocolTest, anIconThatIsGivenBackWaitsForTheNextAnnouncement) {
    begin(0x202020);
    showIcon();
    const auto first = takeIn();
    EXPECT_TRUE(comes([&] { return isLightOnDark(); }));
    tray->giveBack(first);
    EXPECT_TRUE(comes([&] { return !tray->x().exists(first); })) << "nothing stays on the desktop";
    EXPECT_EQ(icon->frame(), std::nullopt);
    EXPECT_EQ(tray->asking(), std::nullopt) << "no tray is pestered";
    tray->announce();
    takeIn();
    EXPECT_TRUE(comes([&] { return isLightOnDark(); }));
    EXPECT_EQ(tray->requests(), 2);
}

// Between the two a tray says how it wants its icons.
TEST_F(TrayProtocolTest, aTrayIsThereOnceItHasAnnouncedItself) {
    TrayIconTest::begin();
    showIcon();
    tray = std::make_unique<SelfMadeTray>(desktop().display(), 0x202020);
    desktop().x().sync();
    for (int turn = 0; turn < 3; ++turn) {
        real->serve();
    }
    EXPECT_FALSE(icon->isAvailable());
    EXPECT_EQ(tray->asking(), std::nullopt);
    tray->announce();
    takeIn();
    EXPECT_TRUE(icon->isAvailable());
    EXPECT_EQ(changes, 1);

    // Another one that takes over gets the icon.
    SelfMadeTray heir(desktop().display(), 0xeceff4);
    heir.announce();
    EXPECT_TRUE(comes([&] { return heir.asking().has_value(); }));
    heir.takeIn(*heir.asking());
    EXPECT_TRUE(comes([&] { return isDarkOnLight(); }));
    const auto first = tray->bar();
    tray.reset();
    EXPECT_TRUE(comes([&] { return !heir.x().exists(first); }));
    EXPECT_TRUE(icon->isAvailable());
    EXPECT_TRUE(isDarkOnLight()) << "the end of the first one changes nothing";
}

}  // namespace
}  // namespace tessellon::desktop
