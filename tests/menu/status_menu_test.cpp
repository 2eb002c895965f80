// The status item on a desktop in memory: what opens and closes its panel, and what the controls of
// the panel do.
#include "menu/status_menu.h"

#include "app/notification_names.h"
#include "base/modifier_flag.h"
#include "engine/engine_fixture.h"
#include "menu/fake_menu_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"

#include <functional>
#include <string>
#include <vector>

namespace tessellon {
namespace {

using Scope = MemoryEventMonitors::Scope;

class StatusMenuTest : public EngineTest {
  protected:
    StatusMenuTest() {
        defaults_.setDouble(preference::gap, 0);
        defaults_.setDouble(preference::padding, 0);
        item.setFrame(itemFrame);
    }

    KeyPanelState& panel() { return *views.states.back(); }
    std::size_t panelsMade() const { return views.states.size(); }

    /// Opens the panel, however short ago it was closed.
    MenuModel& opened() {
        menu.show();
        return *menu.model();
    }

    KeyVerdict key(std::uint32_t code, std::string text = "", std::uint64_t modifiers = 0) {
        KeyEvent event;
        event.keyCode = code;
        event.modifiers = modifiers;
        event.characters = text;
        event.charactersIgnoringModifiers = std::move(text);
        return desktop_.eventMonitors().type(event);
    }
    KeyVerdict commandKey(std::uint32_t code, std::string text) {
        return key(code, std::move(text), modifier_flag::command);
    }

    /// Whether the panel is open after a button went down there, in screen coordinates.
    bool staysOpenAfterPress(std::optional<Point> location, Scope scope) {
        menu.show();
        desktop_.setPointer(location);
        desktop_.eventMonitors().emit(MonitoredEvent::mouseDown, scope);
        return menu.isOpen();
    }

    static constexpr Rect itemFrame{900, 1056, 20, 24};
    static constexpr Rect panelFrame{745, 450, 330, 600};
    static constexpr Rect leftHalfFrame{0, 25, 960, 1055};
    /// A key that has nothing to do with the panel.
    static constexpr std::uint32_t otherKey = 3;

    MemoryStatusItem item;
    FakeMenuViews views;
    MemoryUpdater updater;
    MemoryOwnApplication application;
    MemoryBeep beep;
    ManualRunLoop loop;
    NotificationCenter notifications;
    ArrangementStore store{defaults_, notifications};
    int settingsOpened = 0;
    StatusMenu menu{{.engine = engine(),
                     .arrangements = store,
                     .item = item,
                     .views = views,
                     .updater = updater,
                     .application = application,
                     .beep = beep,
                     .runLoop = loop},
                    [this] {
                        ++settingsOpened;
                        EXPECT_FALSE(menu.isOpen()) << "the panel goes first";
                    }};
};

TEST_F(StatusMenuTest, ThePressedItemOpensItForTheWindowInFront) {
    openFocused({100, 100, 800, 600});
    engine().snap(SnapAction::center);
    item.press();

    ASSERT_TRUE(menu.isOpen());
    EXPECT_TRUE(panel().key);
    EXPECT_TRUE(panel().visible);
    EXPECT_EQ(panel().frame, panelFrame);
    EXPECT_EQ(views.areas.back(), (Rect{0, 0, 1920, 1055}));
    EXPECT_TRUE(item.isHighlighted());
    EXPECT_EQ(menu.model()->appName(), "App 100");
    EXPECT_EQ(menu.model()->bundleID(), "com.editor");
    EXPECT_TRUE(menu.model()->canSnap());
    EXPECT_EQ(menu.model()->last(), engine().lastSnap());
    EXPECT_TRUE(desktop_.activations().empty()) << "nobody's place in front is taken";
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);

    menu.show();
    EXPECT_EQ(panelsMade(), 1U) << "an open one stays";
}

TEST_F(StatusMenuTest, ThePressThatClosedItDoesNotOpenItAgain) {
    openFocused({100, 100, 800, 600});
    const std::vector<std::function<void()>> waysToClose{
        [this] { item.press(); },
        [this] { views.panel->resignKey(); },
        [this] { key(virtual_key::escape); },
        [this] { menu.model()->checkUpdates(); },
        [this] { menu.close(); },
    };
    for (const auto& closeIt : waysToClose) {
        item.press();
        ASSERT_TRUE(menu.isOpen());
        closeIt();
        EXPECT_FALSE(menu.isOpen());
        EXPECT_EQ(menu.model(), nullptr);
        EXPECT_FALSE(panel().exists);
        EXPECT_EQ(panel().orderedOut, 1);
        EXPECT_FALSE(item.isHighlighted());
        EXPECT_EQ(desktop_.eventMonitors().keyMonitorCount(), 0U);

        item.press();
        EXPECT_FALSE(menu.isOpen());
        loop.advance(Seconds{0.25});
        item.press();
        EXPECT_FALSE(menu.isOpen());
        loop.advance(Seconds{0.1});
    }
    EXPECT_TRUE(desktop_.activations().empty());

    menu.show();
    menu.close();
    menu.show();
    EXPECT_TRUE(menu.isOpen()) << "asking for it is no press";
}

TEST_F(StatusMenuTest, ThePressThatClosedItMayBeHeldForLong) {
    constexpr std::uint32_t right = 2;
    auto& hands = desktop_.eventMonitors();
    item.setFrame(std::nullopt);
    menu.show();
    hands.setPressedMouseButtons(right);
    hands.emit(MonitoredEvent::mouseDown, Scope::global);
    ASSERT_FALSE(menu.isOpen());
    loop.advance(Seconds{2});
    item.press();
    EXPECT_FALSE(menu.isOpen());
    hands.setPressedMouseButtons(0);
    loop.advance(Seconds{0.1});
    item.press();
    EXPECT_FALSE(menu.isOpen()) << "told after the release";
    loop.advance(Seconds{0.3});
    item.press();
    EXPECT_TRUE(menu.isOpen());

    hands.setPressedMouseButtons(right);
    menu.close();
    loop.advance(Seconds{6});
    item.press();
    EXPECT_TRUE(menu.isOpen()) << "its release is not told any more";
}

TEST_F(StatusMenuTest, APressOutsideClosesIt) {
    for (const auto scope : {Scope::local, Scope::global}) {
        EXPECT_TRUE(staysOpenAfterPress(Point{900, 700}, scope));
        EXPECT_TRUE(staysOpenAfterPress(Point{910, 1070}, scope)) << "the item toggles it";
        // The pixels in its corners, whose points are their top left ones.
        EXPECT_TRUE(staysOpenAfterPress(Point{745, 1050}, scope));
        EXPECT_TRUE(staysOpenAfterPress(Point{1074, 451}, scope));

        EXPECT_FALSE(staysOpenAfterPress(Point{744, 700}, scope));
        EXPECT_FALSE(staysOpenAfterPress(Point{1075, 700}, scope));
        EXPECT_FALSE(staysOpenAfterPress(Point{900, 1051}, scope));
        EXPECT_FALSE(staysOpenAfterPress(Point{900, 450}, scope));
        EXPECT_FALSE(panel().exists);
    }
    item.setFrame(std::nullopt);
    EXPECT_FALSE(staysOpenAfterPress(Point{910, 1070}, Scope::global));
}

TEST_F(StatusMenuTest, TheItemsPlaceIsThePointersWhereTheTrayDoesNotTell) {
    item.setFrame(std::nullopt);
    desktop_.setPointer(Point{1900, 10});
    opened();
    EXPECT_EQ(panel().frame, (Rect{1582, 16, 330, 600}));
}

TEST_F(StatusMenuTest, KeysCloseOpenSettingsAndQuit) {
    const auto& monitors = desktop_.eventMonitors();
    opened();
    EXPECT_EQ(key(virtual_key::comma, ","), KeyVerdict::notUsed) << "without command";
    EXPECT_EQ(key(virtual_key::q, "q", modifier_flag::control), KeyVerdict::notUsed);
    EXPECT_EQ(commandKey(otherKey, "f"), KeyVerdict::notUsed);
    EXPECT_EQ(commandKey(virtual_key::q, "a"), KeyVerdict::notUsed) << "Latin, in another place";
    EXPECT_EQ(commandKey(virtual_key::comma, ""), KeyVerdict::notUsed) << "a dead key";
    for (const auto held : {modifier_flag::shift, modifier_flag::option, modifier_flag::control}) {
        EXPECT_EQ(key(virtual_key::q, held == modifier_flag::shift ? "Q" : "q",
                      modifier_flag::command | held),
                  KeyVerdict::notUsed)
            << held;
    }
    ASSERT_TRUE(menu.isOpen());

    EXPECT_EQ(key(virtual_key::escape), KeyVerdict::used);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(monitors.keyMonitorCount(), 0U);

    opened();
    EXPECT_EQ(commandKey(otherKey, ","), KeyVerdict::used);
    EXPECT_EQ(settingsOpened, 1);
    opened();
    EXPECT_EQ(key(otherKey, ",", modifier_flag::command | modifier_flag::option), KeyVerdict::used);
    EXPECT_EQ(settingsOpened, 2);
    EXPECT_EQ(application.terminations(), 0);

    opened();
    EXPECT_EQ(commandKey(otherKey, "q"), KeyVerdict::used);
    EXPECT_EQ(application.terminations(), 1);
    EXPECT_FALSE(menu.isOpen());
}

TEST_F(StatusMenuTest, TheKeysAreThoseOfTheLayout) {
    constexpr std::uint32_t placeOfX = 7;
    constexpr std::uint32_t placeOfW = 13;
    struct Layout {
        const char* name;
        bool isLatin;
        std::uint32_t quits;
        const char* typedByIt;
        std::uint32_t opensSettings;
        const char* typedByThat;
    };
    for (const auto& layout : {
             Layout{"dvorak", true, placeOfX, "q", placeOfW, ","},
             Layout{"il", false, virtual_key::q, "/", virtual_key::comma, "ת"},
             Layout{"gr", false, virtual_key::q, ";", virtual_key::comma, ","},
             Layout{"bg", false, virtual_key::q, ",", virtual_key::comma, "р"},
             Layout{"ru", false, virtual_key::q, "й", virtual_key::comma, "б"},
         }) {
        SCOPED_TRACE(layout.name);
        KeyEvent event;
        event.layoutIsLatin = layout.isLatin;
        event.modifiers = modifier_flag::command;
        const auto typed = [&](std::uint32_t code, const char* text) {
            event.keyCode = code;
            event.charactersIgnoringModifiers = text;
            return desktop_.eventMonitors().type(event);
        };
        const int terminationsBefore = application.terminations();
        const int settingsBefore = settingsOpened;
        opened();
        EXPECT_EQ(typed(layout.quits, layout.typedByIt), KeyVerdict::used);
        EXPECT_EQ(application.terminations(), terminationsBefore + 1);
        EXPECT_EQ(settingsOpened, settingsBefore);
        opened();
        EXPECT_EQ(typed(layout.opensSettings, layout.typedByThat), KeyVerdict::used);
        EXPECT_EQ(application.terminations(), terminationsBefore + 1);
        EXPECT_EQ(settingsOpened, settingsBefore + 1);

        opened();
        EXPECT_EQ(typed(otherKey, layout.isLatin ? "й" : ","), KeyVerdict::notUsed);
        event.modifiers |= modifier_flag::shift;
        EXPECT_EQ(typed(layout.opensSettings, "<"), KeyVerdict::notUsed);
        event.modifiers = modifier_flag::command;
        event.isOnFurtherLevel = true;
        EXPECT_EQ(typed(layout.quits, layout.typedByIt), KeyVerdict::notUsed);
        menu.close();
    }
}

TEST_F(StatusMenuTest, ATileSnapsTheWindowThatWasInFrontAtOpening) {
    const auto window = openFocused({100, 100, 800, 600});
    const auto other = open(browser, {300, 300, 700, 500});
    auto& model = opened();
    desktop_.focus(other);
    model.snap(SnapAction::leftHalf);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window).frame, leftHalfFrame);
    EXPECT_EQ(at(other).frame, (Rect{300, 300, 700, 500}));

    auto& next = opened();
    desktop_.close(other);
    next.snap(SnapAction::leftHalf);
    EXPECT_FALSE(menu.isOpen()) << "closes, though the window is gone";
    EXPECT_EQ(at(window).frame, leftHalfFrame);
}

TEST_F(StatusMenuTest, WithoutAWindowOrPermissionTheTilesAreOff) {
    const auto window = openFocused({100, 100, 800, 600});
    const auto canSnap = [this] {
        const bool can = opened().canSnap();
        menu.model()->snap(SnapAction::leftHalf);
        EXPECT_FALSE(menu.isOpen());
        return can;
    };
    desktop_.setTrusted(false);
    EXPECT_FALSE(canSnap());
    EXPECT_EQ(opened().appName(), "App 100");
    menu.close();
    desktop_.setTrusted(true);

    toggleIgnored(defaults_, "com.editor");
    EXPECT_FALSE(canSnap());
    EXPECT_TRUE(opened().ignored());
    menu.close();
    toggleIgnored(defaults_, "com.editor");

    desktop_.setFrontmost(std::nullopt);
    EXPECT_FALSE(canSnap());
    EXPECT_EQ(opened().appName(), std::nullopt);
    menu.close();

    launch(MemoryDesktop::ownPid, "tessellon");
    desktop_.focus(open(MemoryDesktop::ownPid, {0, 0, 700, 500}));
    EXPECT_FALSE(canSnap());
    EXPECT_EQ(opened().appName(), std::nullopt) << "this program is nothing to ignore";
    EXPECT_EQ(menu.model()->bundleID(), std::nullopt);
    EXPECT_EQ(at(window).frame, (Rect{100, 100, 800, 600}));
}

TEST_F(StatusMenuTest, TheFooterOpensSettingsChecksForUpdatesAndQuits) {
    opened().settings();
    EXPECT_EQ(settingsOpened, 1);
    opened().checkUpdates();
    EXPECT_EQ(updater.checks(), 1);
    opened().quit();
    EXPECT_EQ(application.terminations(), 1);
    EXPECT_FALSE(menu.isOpen());
}

TEST_F(StatusMenuTest, SavesAndAppliesArrangements) {
    int saves = 0;
    const auto observer = notifications.observe(
        notification::arrangementsChanged, [&](const NotificationCenter::Object&) {
            ++saves;
            EXPECT_FALSE(menu.isOpen()) << "the panel goes first";
        });
    opened().save();
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(beep.count(), 1) << "there is no window";
    EXPECT_EQ(saves, 0);

    const auto window = openFocused({100, 100, 800, 600});
    opened().save();
    opened().save();
    EXPECT_EQ(saves, 2);
    EXPECT_EQ(beep.count(), 1);
    auto& model = opened();
    ASSERT_EQ(model.arrangements().size(), 2U);
    EXPECT_EQ(model.arrangements()[0].name, "Arrangement 1");
    EXPECT_EQ(model.arrangements()[1].name, "Arrangement 2");

    engine().snap(SnapAction::leftHalf);
    // The model's own arrangement, which goes with the panel.
    model.apply(model.arrangements()[1]);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window).frame, (Rect{100, 100, 800, 600}));
}

TEST_F(StatusMenuTest, TilesTheDisplay) {
    const auto other = open(browser, {300, 300, 700, 500});
    const auto window = openFocused({100, 100, 800, 600});
    defaults_.setBool(preference::tilingEnabled, true);
    opened().tile();
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window).frame, (Rect{0, 25, 1152, 1055}));
    EXPECT_EQ(at(other).frame, (Rect{1152, 25, 768, 1055}));
}

TEST_F(StatusMenuTest, OpensWithWhatTheDesktopCanDo) {
    views.available = false;
    item.press();
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(menu.model(), nullptr);
    EXPECT_FALSE(item.isHighlighted());
    EXPECT_EQ(desktop_.eventMonitors().keyMonitorCount(), 0U);

    views.available = true;
    desktop_.eventMonitors().refuse(MonitoredEvent::mouseDown);
    item.press();
    EXPECT_TRUE(menu.isOpen()) << "nothing was closed";
    EXPECT_EQ(key(virtual_key::escape), KeyVerdict::used);
    EXPECT_FALSE(menu.isOpen());
}

}  // namespace
}  // namespace tessellon
