// One action as it goes on: the stage, and the action's own choices.
#pragma once

#include "stress/checks.h"
#include "stress/random.h"
#include "stress/schedule.h"
#include "stress/stage.h"

#include <string>

namespace tessellon::stress {

struct Scene {
    Stage& stage;
    const Action& action;
    Random random;

    desktop::PrivateDesktop& desktop() { return stage.desktop(); }
    desktop::Program& program() { return stage.program(); }
    void note(const std::string& text) { stage.report().note(text); }
    void count(const std::string& what) { stage.report().count(what); }
};

/// A client by a place that is drawn, started if it is not there. Nothing while there is no window
/// manager that would show it.
Client* someClient(Scene& scene);

/// A frame as failures name it.
std::string text(const desktop::Frame& frame);

/// With some probability something goes wrong now: a client, the window manager, the tray, the
/// compositor or the program is killed, the client hangs or is closed, or the displays change.
/// `client` is the one that the action is about. True when something did happen.
bool maybeInterrupt(Scene& scene, Client* client);

/// A place on the screen that is drawn.
desktop::Position somewhere(Random& random);

/// Asks the window manager to give a client's window a visible frame, and waits for nothing.
void requestFrame(Scene& scene, const Client& client, const desktop::Frame& frame);

// The actions.
void press(Scene& scene);
void burst(Scene& scene);
void snapAndCompare(Scene& scene);
void restoreAndCompare(Scene& scene);
void snapWhileClientDies(Scene& scene);
void activateWindow(Scene& scene);
void placeWindow(Scene& scene);
void maximizeWindow(Scene& scene);
void minimizeWindow(Scene& scene);
void closeWindow(Scene& scene);
void stopClient(Scene& scene);
void drag(Scene& scene);
void useLauncher(Scene& scene);
void usePanel(Scene& scene);
void useSettingsWindow(Scene& scene);
void editSettings(Scene& scene);
void breakSettings(Scene& scene);
void breakSettingsBeforeStart(Scene& scene);
void removeSettings(Scene& scene);
void makeSettingsUnwritable(Scene& scene);
void grabKeyboard(Scene& scene);
void grabPointer(Scene& scene);
void killWindowManager(Scene& scene);
void stopWindowManager(Scene& scene);
void killTray(Scene& scene);
void killCompositor(Scene& scene);
void killBus(Scene& scene);

/// One of the default shortcuts, pressed while whatever window is in front.
void pressSomeShortcut(Scene& scene);

/// Does what the action says.
void perform(Scene& scene);

}  // namespace tessellon::stress
