// Drags of windows by their title bars, with and without Super, to an end or given up.
#include "stress/scene.h"

#include <algorithm>
#include <cstdlib>

namespace tessellon::stress {
namespace {

using desktop::Key;
using desktop::Position;
using desktop::waitUntil;

// At the speed of a hand: the window manager is with it at every step.
void carry(Scene& scene, Position target) {
    constexpr std::chrono::milliseconds aMoment{500};
    constexpr int steps = 8;
    const Position from = scene.desktop().pointer().position();
    for (int step = 1; step <= steps; ++step) {
        scene.desktop().pointer().jumpTo({from.x + (target.x - from.x) * step / steps,
                                          from.y + (target.y - from.y) * step / steps});
        waitUntil([&] { return scene.desktop().x().windowManagerServes(); }, aMoment);
        if (step == 1) {
            scene.stage.waitUntilQuiet();
        }
    }
}

// Whether the window has gone along with the pointer, maybe with the size it had before a snap. In
// the corner of a tiny one the press began to resize it.
bool isCarried(Scene& scene, const Client& client, const desktop::Frame& from) {
    constexpr int clearly = 10;
    constexpr int smallest = 150;
    if (from.width < smallest || from.height < smallest) {
        return false;
    }
    const auto now = scene.desktop().windows().visibleFrame(client.window);
    return now && std::max(std::abs(now->x - from.x), std::abs(now->y - from.y)) > clearly;
}

// A window that is carried with Super down has the grid over it, at the latest when the hand moves
// on: a window manager that gives a window another size late begins a drag late.
void requireGrid(Scene& scene, const Client& client, const desktop::Frame& from) {
    constexpr std::chrono::milliseconds aWhile{3000};
    Stage& stage = scene.stage;
    stage.waitUntilQuiet();
    if (!isCarried(scene, client, from)) {
        scene.count("drags with Super that moved no window");
        return;
    }
    const Position at = scene.desktop().pointer().position();
    int aside = 0;
    const auto isShown = [&] {
        if (stage.pictures().empty()) {
            constexpr int further = 8;
            aside = aside == 0 ? further : 0;
            scene.desktop().pointer().jumpTo({at.x - aside, at.y});
            stage.waitUntilQuiet();
        }
        return !stage.pictures().empty();
    };
    const bool hasGrid = waitUntil(isShown, aWhile);
    const auto now = scene.desktop().windows().visibleFrame(client.window);
    require(hasGrid, "the grid is shown while '" + client.name + "' is dragged with Super down",
            "it is not; the window has gone from " + text(from) + " to " +
                (now ? text(*now) : "no clear place") + ", the pointer is at " +
                std::to_string(at.x) + ", " + std::to_string(at.y));
    scene.count("drags with Super that showed the grid");
}

// Presses where every theme has nothing but the title; each time elsewhere, or two presses would be
// a double click. Gives the frame that the window had then; nothing when it cannot be taken.
std::optional<desktop::Frame> takeTitleBar(Scene& scene, Client& client) {
    // New windows are put somewhere else a moment after they have come.
    waitUntil([&] { return scene.desktop().x().windowManagerServes(); });
    const auto frame = scene.desktop().windows().visibleFrame(client.window);
    constexpr int apart = 23;
    constexpr std::size_t places = 6;
    constexpr int middleOfTitleBar = 12;
    if (!frame) {
        return std::nullopt;
    }
    const int shift = apart * static_cast<int>(scene.action.number % places);
    const Position start{frame->x + frame->width / 4 + std::min(shift, frame->width / 4),
                         frame->y + middleOfTitleBar};
    scene.desktop().pointer().jumpTo(start);
    scene.stage.ledger().mayForget(client.name);
    for (const Client* const each : scene.stage.clients().under(start)) {
        scene.stage.ledger().mayForget(each->name);
    }
    scene.desktop().pointer().press();
    scene.stage.waitUntilQuiet();
    const auto now = scene.desktop().windows().visibleFrame(client.window);
    return now && *now == *frame ? frame : std::nullopt;
}

}  // namespace

void drag(Scene& scene) {
    Client* client = someClient(scene);
    if (client == nullptr || !scene.stage.activate(*client)) {
        return;
    }
    auto& keyboard = scene.desktop().keyboard();
    enum class Command { before, during, never };
    const auto command = static_cast<Command>(scene.random.below(3));
    scene.note(client->name + (command == Command::before   ? " with Super"
                               : command == Command::during ? " with Super later"
                                                            : ""));
    if (command == Command::before) {
        keyboard.press(Key::leftSuper);
    }
    const auto from = takeTitleBar(scene, *client);
    if (!from) {
        return;
    }
    scene.stage.isDragged(*client);
    carry(scene, somewhere(scene.random));
    bool isInterrupted = maybeInterrupt(scene, client);
    if (command == Command::during) {
        keyboard.press(Key::leftSuper);
    }
    constexpr int mostWays = 3;
    for (int ways = scene.random.between(1, mostWays); ways > 0; --ways) {
        carry(scene, somewhere(scene.random));
    }
    if (command != Command::never && !isInterrupted && scene.stage.hasWindowManager()) {
        requireGrid(scene, *client, *from);
    }
    isInterrupted = isInterrupted || maybeInterrupt(scene, isInterrupted ? nullptr : client);

    enum class End { drop, escape, releaseSuperFirst, escapeAndGoOn };
    switch (static_cast<End>(scene.random.below(4))) {
        case End::drop:
            break;
        case End::escape:
            keyboard.tap(Key::escape);
            break;
        case End::releaseSuperFirst:
            keyboard.release(Key::leftSuper);
            break;
        case End::escapeAndGoOn:
            keyboard.tap(Key::escape);
            carry(scene, somewhere(scene.random));
            break;
    }
    scene.desktop().pointer().release();
    scene.stage.letGo();
}

}  // namespace tessellon::stress
