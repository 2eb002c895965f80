// A client that stores nonsense where the program reads: in the properties of its window, and in
// those by which the window manager tells about itself.
#include "desktop_fixture.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{300, 200, 700, 500};

class HostileClientTest : public DesktopTest {
  protected:
    xcb_connection_t* xcb() { return desktop().x().connection(); }

    template <typename T, std::size_t count>
    T oneOf(const std::array<T, count>& choices) {
        return choices[random_() % count];
    }

    void storeNonsense(xcb_window_t window, std::string_view property) {
        auto& x = desktop().x();
        const std::array<xcb_atom_t, 6> types{XCB_ATOM_STRING,  XCB_ATOM_CARDINAL,
                                              XCB_ATOM_ATOM,    XCB_ATOM_WINDOW,
                                              x.atom(property), x.atom("UTF8_STRING")};
        const auto format = oneOf(std::array<std::uint8_t, 4>{8, 16, 32, 32});
        std::vector<std::uint8_t> bytes(
            oneOf(std::array<std::size_t, 8>{0, 4, 8, 16, 48, 72, 4092, 20000}));
        const auto fill = oneOf(std::array<unsigned, 4>{0, 0x80, 0xff, 0x100});
        for (auto& byte : bytes) {
            byte = static_cast<std::uint8_t>(fill > 0xff ? random_() : fill);
        }
        xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, x.atom(property), oneOf(types),
                            format, static_cast<std::uint32_t>(bytes.size() * 8 / format),
                            bytes.data());
    }

    xcb_window_t openWindow() {
        auto& x = desktop().x();
        const xcb_window_t window = xcb_generate_id(xcb());
        xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, window, x.root(), 900, 600, 450, 350, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(xcb(), window);
        EXPECT_TRUE(waitUntil([&] {
            const auto managed = x.values(x.root(), "_NET_CLIENT_LIST");
            return std::find(managed.begin(), managed.end(), window) != managed.end();
        }));
        return window;
    }

  private:
    std::mt19937 random_{1};
};

TEST_F(HostileClientTest, whatItSaysOfItsWindowHarmsNoOtherWindow) {
    constexpr std::array properties{"WM_CLASS",          "WM_NAME",
                                    "_NET_WM_NAME",      "_GTK_APPLICATION_ID",
                                    "WM_NORMAL_HINTS",   "_GTK_FRAME_EXTENTS",
                                    "_NET_WM_STATE",     "_NET_WM_WINDOW_TYPE",
                                    "_NET_WM_DESKTOP",   "_NET_WM_PID",
                                    "WM_CLIENT_MACHINE", "WM_TRANSIENT_FOR",
                                    "_NET_WM_ICON",      "_NET_FRAME_EXTENTS",
                                    "_NET_WM_STRUT",     "_NET_WM_STRUT_PARTIAL"};
    constexpr int rounds = 15;
    useProgram({{"tilingEnabled", true}});
    const xcb_window_t clock = startClock(original);
    const xcb_window_t hostile = openWindow();
    for (int round = 0; round < rounds; ++round) {
        for (const auto* property : properties) {
            storeNonsense(hostile, property);
        }
        desktop().x().sync();
        // Wherever these put it, the program has to read what the window says of itself.
        afterPress(hostile, Held::controlAlt, round % 2 == 0 ? Key::left : Key::right);
    }
    xcb_delete_property(xcb(), hostile, desktop().x().atom("_NET_WM_STRUT"));
    xcb_delete_property(xcb(), hostile, desktop().x().atom("_NET_WM_STRUT_PARTIAL"));
    EXPECT_EQ(snap(clock, Held::controlAlt, Key::left, leftHalf), leftHalf);
    EXPECT_EQ(snap(clock, Held::controlAlt, Key::right, rightHalf), rightHalf);
}

TEST_F(HostileClientTest, whatItSaysForTheWindowManagerIsForgottenWithIt) {
    constexpr std::array properties{"_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW",
                                    "_NET_CURRENT_DESKTOP", "_NET_WORKAREA",
                                    "_NET_SUPPORTING_WM_CHECK"};
    constexpr int rounds = 15;
    useDesktop();
    // Between two truths it may believe that no window manager runs.
    programMaySpeak();
    program().start();
    const xcb_window_t clock = startClock(original);
    desktop().windows().activate(clock);
    auto& x = desktop().x();
    std::vector<std::vector<std::uint32_t>> truth;
    truth.reserve(properties.size());
    for (const auto* property : properties) {
        truth.push_back(x.values(x.root(), property));
    }
    for (int round = 0; round < rounds; ++round) {
        for (const auto* property : properties) {
            storeNonsense(x.root(), property);
        }
        x.sync();
        desktop().keyboard().combination(Held::controlAlt, Key::left);
        program().waitUntilIdle();
    }
    const std::array<std::string_view, properties.size()> types{"WINDOW", "WINDOW", "CARDINAL",
                                                                "CARDINAL", "WINDOW"};
    for (std::size_t i = 0; i < properties.size(); ++i) {
        x.setValues(x.root(), properties[i], types[i], truth[i]);
    }
    ASSERT_TRUE(program().waitUntilHotKeysActive());
    program().waitUntilIdle();
    EXPECT_EQ(snap(clock, Held::controlAlt, Key::right, rightHalf), rightHalf);
    EXPECT_EQ(snap(clock, Held::controlAlt, Key::left, leftHalf), leftHalf);
}

}  // namespace
}  // namespace tessellon::desktop
