// What users do to windows without the program, and clients that hang.
#include "stress/scene.h"

namespace tessellon::stress {
namespace {

constexpr std::uint32_t sourcePager = 2;
constexpr std::chrono::milliseconds aMoment{300};

}  // namespace

void activateWindow(Scene& scene) {
    if (Client* const client = someClient(scene)) {
        scene.stage.activate(*client);
    }
}

void placeWindow(Scene& scene) {
    Client* const client = someClient(scene);
    if (client == nullptr) {
        return;
    }
    // Asked for and not waited for: the next action finds the window on its way.
    constexpr std::uint32_t northWestPositionAndSizeOfPager = 0x2F01;
    const auto number = [&](int first, int last) {
        return static_cast<std::uint32_t>(scene.random.between(first, last));
    };
    const std::uint32_t x = number(10, 1000);
    const std::uint32_t y = number(30, 500);
    const std::uint32_t width = number(420, 850);
    const std::uint32_t height = number(320, 500);
    scene.desktop().x().tellRoot(client->window, "_NET_MOVERESIZE_WINDOW",
                                 {northWestPositionAndSizeOfPager, x, y, width, height});
}

void maximizeWindow(Scene& scene) {
    constexpr std::uint32_t toggle = 2;
    if (Client* const client = someClient(scene)) {
        auto& x = scene.desktop().x();
        x.tellRoot(client->window, "_NET_WM_STATE",
                   {toggle, x.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                    x.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), sourcePager, 0});
    }
}

void minimizeWindow(Scene& scene) {
    constexpr std::uint32_t iconic = 3;
    if (Client* const client = someClient(scene)) {
        scene.desktop().x().tellRoot(client->window, "WM_CHANGE_STATE", {iconic, 0, 0, 0, 0});
        desktop::waitUntil([&] { return !scene.desktop().windows().isShown(client->window); },
                           aMoment);
    }
}

void closeWindow(Scene& scene) {
    if (Client* const client = someClient(scene)) {
        scene.note(client->name);
        scene.desktop().windows().close(client->window);
        if (scene.random.chance(50)) {
            pressSomeShortcut(scene);
            scene.stage.mayForgetActive();
        }
    }
}

void stopClient(Scene& scene) {
    Client* const client = someClient(scene);
    if (client == nullptr) {
        return;
    }
    scene.stage.activate(*client);
    scene.stage.clients().stop(*client);
    constexpr int most = 4;
    for (int left = scene.random.between(1, most); left > 0; --left) {
        pressSomeShortcut(scene);
    }
    if (scene.random.chance(30)) {
        scene.count("killed: a client that hangs");
        scene.stage.clients().kill(*client);
    }
    scene.stage.mayForgetActive();
}

}  // namespace tessellon::stress
