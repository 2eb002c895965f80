// Drags of windows by their title bars, with and without Super, to an end or given up.
#include "stress/scene.h"

#include <algorithm>

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
    }
}

// Presses where every theme has nothing but the title; each time elsewhere, or two presses would be
// a double click.
bool takeTitleBar(Scene& scene, Client& client) {
    const auto frame = scene.desktop().windows().visibleFrame(client.window);
    constexpr int apart = 23;
    constexpr std::size_t places = 6;
    constexpr int middleOfTitleBar = 12;
    if (!frame) {
        return false;
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
    return true;
}

}  // namespace

void drag(Scene& scene) {
    Client* client = someClient(scene);
    if (client == nullptr || !scene.stage.activate(*client)) {
        return;
    }
    auto& keyboard = scene.desktop().keyboard();
    scene.note(client->name);
    enum class Command { before, during, never };
    const auto command = static_cast<Command>(scene.random.below(3));
    if (command == Command::before) {
        keyboard.press(Key::leftSuper);
    }
    if (!takeTitleBar(scene, *client)) {
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
        scene.stage.waitUntilQuiet();
        scene.count(scene.stage.pictures().empty() ? "drags with Super that showed no grid"
                                                   : "drags with Super that showed the grid");
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
    // The snap follows 0.05 s after the release.
    scene.stage.mayForgetActive();
}

}  // namespace tessellon::stress
