// Windows that a tiling window manager arranges, which stay where they are whatever is asked for:
// nothing comes of that, then or when they float later.
#include "desktop_fixture.h"
#include "place_shortcuts.h"

#include <nlohmann/json.hpp>
#include <string>
#include <variant>

namespace tessellon::desktop {
namespace {

class TilingWindowManagerTest : public DesktopTest {
  protected:
    enum class Layout { tiled, floating };

    std::string testedUnder() const override { return "i3"; }

    /// Lets the window manager change how it keeps the window, and gives the frame that comes of
    /// it.
    Frame keep(xcb_window_t window, Layout layout) {
        const Frame before = frameOf(window);
        desktop().run({"i3-msg", "[id=" + std::to_string(window) + "] floating " +
                                     (layout == Layout::tiled ? "disable" : "enable")});
        EXPECT_TRUE(waitUntil([&] { return frameOf(window) != before; }));
        return frameInTheEnd(window);
    }
    /// The frame when everybody is done with it.
    Frame frameInTheEnd(xcb_window_t window) {
        EXPECT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        program().waitUntilIdle();
        return frameOf(window);
    }

    /// What the program remembers in order to restore windows, as it is stored.
    nlohmann::json records() {
        program().waitUntilIdle();
        const auto settings = program().settings().value_or(StoredValues{});
        const auto found = settings.find("restoreMemory");
        return found != settings.end()
                   ? nlohmann::json::parse(std::get<StoredData>(found->second).bytes)
                   : nlohmann::json::array();
    }
};

TEST_F(TilingWindowManagerTest, whatStaysInItsTileIsRestoredThereAndExactOnceItFloats) {
    useProgram({{"tilingEnabled", true}});
    const Frame original{240, 160, 640, 480};
    const xcb_window_t neighbour = startClock({300, 200, 700, 500}, "neighbour");
    const xcb_window_t window = startClock(original);
    keep(neighbour, Layout::tiled);
    const Frame tile = keep(window, Layout::tiled);
    const Frame besideIt = frameOf(neighbour);

    for (const Shortcut& shortcut : placeShortcuts) {
        EXPECT_EQ(afterPress(window, shortcut.held, shortcut.key), tile) << shortcut.target;
    }
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::c), tile);
    ASSERT_EQ(records().size(), 1U);
    EXPECT_EQ(records()[0]["bundleID"], "XClock");
    EXPECT_EQ(records()[0]["original"], records()[0]["snapped"]);
    EXPECT_EQ(afterPress(window, Held::controlAltSuper, Key::t), tile) << "tiled by us, too";
    EXPECT_EQ(records().size(), 2U);
    for (const xcb_window_t each : {window, neighbour}) {
        desktop().windows().activate(each);
        desktop().keyboard().combination(Held::controlAlt, Key::backspace);
        EXPECT_EQ(frameInTheEnd(window), tile) << "restored";
        EXPECT_EQ(frameInTheEnd(neighbour), besideIt) << "restored";
    }
    EXPECT_EQ(records(), nlohmann::json::array());

    keep(window, Layout::floating);
    ASSERT_EQ(desktop().windows().place(window, original), original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original);
    EXPECT_EQ(records(), nlohmann::json::array());
}

TEST_F(TilingWindowManagerTest, aFloatingWindowThatIsSnappedMayBeTiledAndComeBack) {
    useProgram();
    const Frame original{240, 160, 640, 480};
    startClock({300, 200, 700, 500}, "neighbour");
    const xcb_window_t window = startClock(original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    const Frame tile = keep(window, Layout::tiled);
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::i), tile);
    ASSERT_EQ(records().size(), 1U);
    const nlohmann::json asSnapped = {{original.x, original.y}, {original.width, original.height}};
    EXPECT_EQ(records()[0]["original"], asSnapped) << "the frame from before the first snap";
    keep(window, Layout::floating);
    const Frame elsewhere{500, 300, 800, 600};
    ASSERT_EQ(desktop().windows().place(window, elsewhere), elsewhere);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original);
}

}  // namespace
}  // namespace tessellon::desktop
