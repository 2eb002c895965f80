#include "stress/scene.h"

#include <sstream>

namespace tessellon::stress {

Client* someClient(Scene& scene) {
    const std::size_t place = scene.random.below(Clients::places);
    return scene.stage.hasWindowManager() ? scene.stage.clients().open(place) : nullptr;
}

std::string text(const desktop::Frame& frame) {
    std::ostringstream out;
    out << frame;
    return out.str();
}

desktop::Position somewhere(Random& random) {
    constexpr int margin = 15;
    constexpr int width = 1920;
    constexpr int height = 1080;
    const int x = random.between(margin, width - margin);
    return {x, random.between(margin, height - margin)};
}

bool maybeInterrupt(Scene& scene, Client* client) {
    constexpr int often = 20;
    const bool happens = scene.random.chance(often);
    constexpr std::size_t kinds = 16;
    const std::size_t kind = scene.random.below(kinds);
    if (!happens) {
        return false;
    }
    Stage& stage = scene.stage;
    constexpr std::size_t firstThatTouchesWindows = 3;
    if (kind >= firstThatTouchesWindows) {
        stage.activeMayHaveChanged();
    }
    switch (kind) {
        case 0:
            stage.killTray();
            break;
        case 1:
            stage.killCompositor();
            break;
        case 2:
            if (scene.action.program == Program::mayBeKilled) {
                stage.killProgram();
            }
            break;
        case 3:
            stage.killWindowManager();
            break;
        case 4:
        case 5:
            stage.changeDisplays(scene.random);
            break;
        case 6:
        case 7:
        case 8:
            if (client != nullptr) {
                scene.note("client stopped");
                stage.clients().stop(*client);
            }
            break;
        case 9:
        case 10:
            if (client != nullptr) {
                scene.note("client closed");
                stage.clients().close(*client);
            }
            break;
        default:
            if (client != nullptr) {
                scene.note("client killed");
                scene.count("killed: a client");
                stage.clients().kill(*client);
            }
            break;
    }
    return true;
}

void perform(Scene& scene) {
    switch (scene.action.kind) {
        case Kind::press:
            return press(scene);
        case Kind::burst:
            return burst(scene);
        case Kind::snapAndCompare:
            return snapAndCompare(scene);
        case Kind::restoreAndCompare:
            return restoreAndCompare(scene);
        case Kind::snapWhileClientDies:
            return snapWhileClientDies(scene);
        case Kind::activate:
            return activateWindow(scene);
        case Kind::place:
            return placeWindow(scene);
        case Kind::maximize:
            return maximizeWindow(scene);
        case Kind::minimize:
            return minimizeWindow(scene);
        case Kind::openWindow:
            someClient(scene);
            return;
        case Kind::closeWindow:
            return closeWindow(scene);
        case Kind::killClient:
            if (Client* const client = someClient(scene)) {
                scene.count("killed: a client");
                scene.stage.clients().kill(*client);
            }
            return;
        case Kind::stopClient:
            return stopClient(scene);
        case Kind::drag:
            return drag(scene);
        case Kind::launcher:
            return useLauncher(scene);
        case Kind::panel:
            return usePanel(scene);
        case Kind::settingsWindow:
            return useSettingsWindow(scene);
        case Kind::editSettings:
            return editSettings(scene);
        case Kind::breakSettings:
            return breakSettings(scene);
        case Kind::breakSettingsBeforeStart:
            return breakSettingsBeforeStart(scene);
        case Kind::removeSettings:
            return removeSettings(scene);
        case Kind::makeSettingsUnwritable:
            return makeSettingsUnwritable(scene);
        case Kind::changeDisplays:
            return scene.stage.changeDisplays(scene.random);
        case Kind::grabKeyboard:
            return grabKeyboard(scene);
        case Kind::grabPointer:
            return grabPointer(scene);
        case Kind::killWindowManager:
            return killWindowManager(scene);
        case Kind::stopWindowManager:
            return stopWindowManager(scene);
        case Kind::killTray:
            return killTray(scene);
        case Kind::killCompositor:
            return killCompositor(scene);
        case Kind::killProgram:
            return scene.stage.killProgram();
        case Kind::killBus:
            return killBus(scene);
    }
}

}  // namespace tessellon::stress
