// What users do to windows without the program, and clients that hang.
#include "stress/scene.h"

namespace tessellon::stress {
namespace {

constexpr std::uint32_t sourcePager = 2;
constexpr std::chrono::milliseconds aMoment{300};

}  // namespace

void requestFrame(Scene& scene, const Client& client, const desktop::Frame& frame) {
    constexpr std::uint32_t northWestPositionAndSizeOfPager = 0x2F01;
    auto& x = scene.desktop().x();
    const auto edges = [&](const char* property) {
        const auto values = x.values(client.window, property);
        return values.size() < 4
                   ? desktop::Edges{}
                   : desktop::Edges{static_cast<int>(values[0]), static_cast<int>(values[1]),
                                    static_cast<int>(values[2]), static_cast<int>(values[3])};
    };
    const auto outer = grown(frame, edges("_GTK_FRAME_EXTENTS"));
    const auto inner = shrunk(outer, edges("_NET_FRAME_EXTENTS"));
    x.tellRoot(client.window, "_NET_MOVERESIZE_WINDOW",
               {northWestPositionAndSizeOfPager, static_cast<std::uint32_t>(outer.x),
                static_cast<std::uint32_t>(outer.y), static_cast<std::uint32_t>(inner.width),
                static_cast<std::uint32_t>(inner.height)});
}

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
    // The next action finds the window on its way.
    auto& random = scene.random;
    const int x = random.between(10, 1000);
    const int y = random.between(30, 500);
    const int width = random.between(420, 850);
    requestFrame(scene, *client, {x, y, width, random.between(320, 500)});
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
        scene.stage.clients().close(*client);
        if (scene.random.chance(50)) {
            pressSomeShortcut(scene);
            scene.stage.activeMayHaveChanged();
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
        scene.stage.activeMayHaveChanged();
        scene.stage.clients().kill(*client);
    }
}

}  // namespace tessellon::stress
