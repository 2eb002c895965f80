// The launcher, the panel of the status item, and the settings window.
#include "menu_panel.h"
#include "stress/scene.h"

#include <algorithm>
#include <array>

namespace tessellon::stress {
namespace {

using desktop::Frame;
using desktop::Key;
using desktop::MenuPanel;
using desktop::Position;
using desktop::waitUntil;

constexpr int launcherWidth = 472;

bool launcherIsOpen(Stage& stage) {
    return stage.pictureOfWidth(launcherWidth).has_value();
}

std::optional<MenuPanel> panelOf(Stage& stage) {
    const auto frame = stage.pictureOfWidth(MenuPanel::width);
    return frame ? std::optional(MenuPanel(*frame)) : std::nullopt;
}

void click(Scene& scene, Position place) {
    scene.desktop().pointer().moveTo(place);
    scene.desktop().pointer().click();
}

void typeSomething(Scene& scene) {
    constexpr std::array keys{Key::h, Key::a,     Key::l,    Key::f,     Key::t,    Key::m,
                              Key::u, Key::space, Key::left, Key::right, Key::down, Key::backspace};
    constexpr int most = 5;
    for (int left = scene.random.between(0, most); left > 0; --left) {
        scene.desktop().keyboard().tap(scene.random.pick(keys));
    }
}

/// A chord or Return may open what something else had closed, and so may a tile that is pressed.
void closeForSure(Scene& scene) {
    constexpr int attempts = 4;
    constexpr std::chrono::milliseconds aWhile{1000};
    scene.stage.waitUntilQuiet();
    for (int attempt = 0; attempt < attempts && scene.stage.programShouldRun(); ++attempt) {
        if (waitUntil([&] { return scene.stage.pictures().empty(); }, aWhile)) {
            return;
        }
        scene.desktop().keyboard().tap(Key::escape);
        scene.stage.waitUntilQuiet();
    }
}

/// Closes what is open in `frame` by one of the ways that users have.
void closeBy(Scene& scene, const Frame& frame) {
    auto& keyboard = scene.desktop().keyboard();
    enum class Way { escape, clickOutside, chord, enter };
    const auto way = static_cast<Way>(scene.random.below(4));
    switch (way) {
        case Way::escape:
            keyboard.tap(Key::escape);
            break;
        case Way::clickOutside: {
            // Beside it, in the background or in some window: at the bottom of the screen.
            constexpr int bottom = 1040;
            const int left = std::max(2, frame.x - 40);
            click(scene, {left, bottom});
            break;
        }
        case Way::chord:
            keyboard.combination({Key::rightSuper}, Key::slash);
            break;
        case Way::enter:
            scene.stage.mayRestoreActive();
            keyboard.tap(Key::enter);
            break;
    }
    if (way == Way::escape || way == Way::clickOutside) {
        constexpr std::chrono::milliseconds aWhile{3000};
        require(waitUntil([&] { return scene.stage.pictures().empty(); }, aWhile),
                way == Way::escape ? "Escape closes it" : "a click beside it closes it",
                "it stays");
        scene.count(way == Way::escape ? "closed by Escape" : "closed by a click beside");
    }
    closeForSure(scene);
}

/// Starts the program a second time, which opens or closes the panel of the one that runs.
void startAgain(Scene& scene) {
    const auto options = scene.desktop().processOptions("second");
    desktop::Process second({desktop::programPath()}, options);
    const auto end = second.waitForEnd(desktop::patience);
    const desktop::ProcessEnd well{.exitCode = 0, .signal = std::nullopt};
    const std::string said = desktop::fileContents(*options.standardError);
    require(end == well && said.empty(), "a second start ends well and silently",
            said.empty() ? "it does not end, or not well" : said);
}

/// Opens the panel by the tray or by a second start. Nothing when it did not open although it need
/// not have done so.
std::optional<MenuPanel> openPanel(Scene& scene) {
    Stage& stage = scene.stage;
    const auto icon =
        stage.hasTray() ? findTrayIcon(scene.desktop().x(), "Tessellon") : std::optional<Frame>();
    if (icon && scene.random.chance(50)) {
        click(scene, {icon->x + icon->width / 2, icon->y + icon->height / 2});
        scene.count("panel opened by the tray");
        // The tray may be moving its icons.
        constexpr std::chrono::milliseconds clicksTime{2000};
        if (waitUntil([&] { return panelOf(stage).has_value(); }, clicksTime)) {
            stage.waitUntilQuiet();
            return panelOf(stage);
        }
        scene.count("tray clicks that opened nothing");
        return std::nullopt;
    }
    // A tray or a dock that moves, or another window that comes to the front, closes it at once.
    constexpr int attempts = 3;
    constexpr std::chrono::milliseconds aWhile{3000};
    for (int attempt = 1; attempt < attempts; ++attempt) {
        startAgain(scene);
        if (waitUntil([&] { return panelOf(stage).has_value(); }, aWhile)) {
            scene.count("panel opened by a second start");
            stage.waitUntilQuiet();
            return panelOf(stage);
        }
        scene.count("panels that did not stay open");
    }
    startAgain(scene);
    scene.count("panel opened by a second start");
    requireSoon([&] { return panelOf(stage).has_value(); }, "the panel opens", "it does not");
    stage.waitUntilQuiet();
    return panelOf(stage);
}

void clickInPanel(Scene& scene, const MenuPanel& panel) {
    constexpr std::size_t tiles = 16;
    enum class Control { tile, save, firstArrangement, secondArrangement, pauseTwice, tilingTwice };
    const auto tile = static_cast<desktop::MenuTile>(scene.random.below(tiles));
    switch (static_cast<Control>(scene.random.below(6))) {
        case Control::tile:
            return click(scene, panel.tile(tile));
        case Control::save:
            scene.count("arrangements saved");
            return click(scene, panel.saveCurrent());
        case Control::firstArrangement:
            scene.count("arrangements applied");
            return click(scene, panel.arrangement(0));
        case Control::secondArrangement:
            scene.count("arrangements applied");
            return click(scene, panel.arrangement(1));
        case Control::pauseTwice:
            click(scene, panel.switchOf(desktop::MenuSwitch::pause));
            return click(scene, panel.switchOf(desktop::MenuSwitch::pause));
        case Control::tilingTwice:
            click(scene, panel.switchOf(desktop::MenuSwitch::tiling));
            return click(scene, panel.switchOf(desktop::MenuSwitch::tiling));
    }
}

/// What was switched by clicks that met something else is put right.
void switchBack(Scene& scene) {
    if (!scene.stage.programShouldRun()) {
        return;
    }
    scene.stage.waitUntilQuiet();
    const auto settings = scene.program().settings();
    require(settings.has_value(), "the settings file is whole", "it is not");
    const auto is = [&](const char* key, const desktop::StoredValue& value) {
        const auto found = settings->find(key);
        return found != settings->end() && found->second == value;
    };
    if (is("paused", true) || is("tilingEnabled", false)) {
        scene.stage.editSettings({{"paused", false}, {"tilingEnabled", true}});
        scene.stage.waitUntilQuiet();
    }
}

std::optional<xcb_window_t> settingsWindow(Scene& scene) {
    auto& windows = scene.desktop().windows();
    for (const xcb_window_t window : windows.managed()) {
        if (windows.title(window) == "Tessellon Settings" && windows.isShown(window)) {
            return window;
        }
    }
    return std::nullopt;
}

/// Nothing when no panel opened to click in.
std::optional<xcb_window_t> openSettingsWindow(Scene& scene) {
    constexpr int attempts = 3;
    constexpr std::chrono::milliseconds aWhile{6000};
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto panel = openPanel(scene);
        if (!panel) {
            return std::nullopt;
        }
        click(scene, panel->settings());
        if (waitUntil([&] { return settingsWindow(scene).has_value(); }, aWhile)) {
            return settingsWindow(scene);
        }
        scene.count("clicks for the settings that met no panel");
        require(!panelOf(scene.stage), "the settings window opens",
                "it does not, and the panel stays");
    }
    throw Failure("the settings window opens", "it does not");
}

}  // namespace

void useLauncher(Scene& scene) {
    Stage& stage = scene.stage;
    Client* const client = someClient(scene);
    if (client != nullptr) {
        stage.activate(*client);
    }
    auto& x = scene.desktop().x();
    const auto slash = static_cast<std::uint8_t>(Key::slash);
    if (stage.hasWindowManager()) {
        requireSoon([&] { return x.combinationIsHeld(slash, XCB_MOD_MASK_4); },
                    "the launcher's chord is active", "it is not");
    }
    stage.waitUntilQuiet();
    const bool mustOpen = stage.hasWindowManager() && client != nullptr &&
                          stage.activeClient() == client &&
                          scene.desktop().windows().visibleFrame(client->window).has_value();
    scene.desktop().keyboard().combination({Key::rightSuper}, Key::slash);
    constexpr std::chrono::milliseconds aWhile{5000};
    if (mustOpen && !waitUntil([&] { return launcherIsOpen(stage); }, aWhile)) {
        // Another window that comes to the front closes it at once, as it does soon after a window
        // manager has taken over.
        scene.count("launchers that did not stay open");
        scene.desktop().keyboard().combination({Key::rightSuper}, Key::slash);
        const bool opens = waitUntil([&] { return launcherIsOpen(stage); });
        require(opens || stage.activeClient() != client, "the launcher opens", "it does not");
    }
    stage.waitUntilQuiet();
    stage.mayRestoreActive();
    typeSomething(scene);
    maybeInterrupt(scene, client);
    if (stage.programShouldRun()) {
        const auto frame = stage.pictureOfWidth(launcherWidth).value_or(Frame{800, 300, 10, 10});
        if (scene.random.chance(25)) {
            // A tile of the first row.
            click(scene, {frame.x + 128 + 52, frame.y + 120});
            stage.waitUntilQuiet();
        }
        if (launcherIsOpen(stage)) {
            closeBy(scene, frame);
        }
        closeForSure(scene);
    }
}

void usePanel(Scene& scene) {
    Stage& stage = scene.stage;
    Client* const client = someClient(scene);
    if (client != nullptr) {
        stage.activate(*client);
    }
    stage.mayRestoreActive();
    const auto panel = openPanel(scene);
    if (!panel) {
        return;
    }
    constexpr int mostClicks = 3;
    for (int clicks = scene.random.between(0, mostClicks); clicks > 0; --clicks) {
        if (panelOf(stage)) {
            clickInPanel(scene, *panel);
            stage.waitUntilQuiet();
        }
    }
    maybeInterrupt(scene, client);
    if (stage.programShouldRun() && panelOf(stage)) {
        closeBy(scene, panel->frame());
    }
    if (stage.programShouldRun()) {
        closeForSure(scene);
    }
    switchBack(scene);
}

void useSettingsWindow(Scene& scene) {
    Stage& stage = scene.stage;
    if (!stage.hasWindowManager()) {
        return;
    }
    auto& windows = scene.desktop().windows();
    const auto window = openSettingsWindow(scene);
    if (!window) {
        return;
    }
    stage.waitUntilQuiet();
    const auto frame = windows.visibleFrame(*window).value_or(Frame{});
    // The pages, by the items of the sidebar.
    constexpr std::array pages{120, 164, 208, 252, 296, 340, 384};
    constexpr int most = 6;
    for (int visits = scene.random.between(0, most); visits > 0; --visits) {
        click(scene, {frame.x + 100, frame.y + scene.random.pick(pages)});
        stage.waitUntilQuiet();
    }
    maybeInterrupt(scene, nullptr);
    if (!stage.programShouldRun()) {
        return;
    }
    if (!stage.hasWindowManager()) {
        stage.startWindowManager(scene.random);
    }
    constexpr std::chrono::milliseconds windowManagersTime{1000};
    requireSoon(
        [&] {
            windows.close(*window);
            return waitUntil([&] { return !windows.isShown(*window); }, windowManagersTime);
        },
        "the settings window closes", "it stays");
    switchBack(scene);
}

}  // namespace tessellon::stress
