// The program: chooses the real side of every port, builds the application on them and runs it.
#include "app/app_delegate.h"
#include "app/command_line.h"
#include "app/display_session.h"
#include "base/log.h"
#include "drag/drag_switch.h"
#include "drag/qt_drag_views.h"
#include "launcher/qt_launcher_views.h"
#include "menu/qt_menu_views.h"
#include "onboarding/onboarding_view.h"
#include "platform/linux/autostart_entry.h"
#include "platform/linux/bus_wait.h"
#include "platform/linux/defaults_file.h"
#include "platform/linux/desktop_entries.h"
#include "platform/linux/environment.h"
#include "platform/linux/hidden_session_bus.h"
#include "platform/linux/logind_power_events.h"
#include "platform/linux/process_info.h"
#include "platform/linux/session_service.h"
#include "platform/linux/status_notifier_item.h"
#include "platform/linux/symbolic_icon.h"
#include "platform/linux/termination_signals.h"
#include "platform/qt/child_feed_source.h"
#include "platform/qt/qt_own_application.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/qt_window.h"
#include "platform/qt/toolkit.h"
#include "platform/tray_status_item.h"
#include "platform/x11/command_drag.h"
#include "platform/x11/connection.h"
#include "platform/x11/first_look.h"
#include "platform/x11/instance_lock.h"
#include "platform/x11/key_grabs.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"
#include "platform/x11/x11_accessibility.h"
#include "platform/x11/x11_applications.h"
#include "platform/x11/x11_beep.h"
#include "platform/x11/x11_compositing.h"
#include "platform/x11/x11_displays.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_event_taps.h"
#include "platform/x11/x11_hot_key_center.h"
#include "platform/x11/x11_keyboard_focus.h"
#include "platform/x11/x11_tray_icon.h"
#include "platform/x11/x11_window_list.h"
#include "settings/settings_view.h"
#include "ui/glyph.h"
#include "ui/status_glyph.h"
#include "updates/feed_updater.h"
#include "updates/qt_update_views.h"

#include <QApplication>
#include <QSize>
#include <QString>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <unistd.h>

namespace tessellon {
namespace {

constexpr int exitUsage = 2;

constexpr Seconds windowManagerStartTimeout{0.5};

constexpr Seconds sessionBusTimeout{1.0};

constexpr auto runningVersion = Version::parse(TESSELLON_VERSION);
static_assert(runningVersion, "the version is no dotted number");

/// Where panels find the icon that they draw in their own color.
std::optional<std::filesystem::path> iconFolder(const std::filesystem::path& program) {
    const std::filesystem::path runtime = environment("XDG_RUNTIME_DIR");
    return symbolicIconFolder(program,
                              runtime.is_absolute() ? std::optional(runtime) : std::nullopt);
}

/// Tells somebody who started the program by hand that it runs; nobody else has asked.
void greet(AppDelegate& delegate, const std::string& settings) {
    if (isatty(STDOUT_FILENO) == 0) {
        return;
    }
    const auto state = delegate.started() ? delegate.hotkeys().statusText()
                                          : "waiting for a window manager that follows EWMH";
    std::printf("tessellon runs: %s. Settings: %s. Ctrl+C ends it.\n", state.c_str(),
                settings.c_str());
    std::fflush(stdout);
}

/// The toolkit talks to the session bus while it starts, and waits for its answer for ever.
std::unique_ptr<HiddenSessionBus> leaveSilentSessionBus(BusProbe& sessionBus) {
    if (!sessionBus.isSilent()) {
        return nullptr;
    }
    logWarning("the session bus does not answer; tessellon starts without it");
    return std::make_unique<HiddenSessionBus>();
}

/// The sides of the ports that talk to the X server.
struct X11Desktop {
    X11Desktop(x11::Connection& connection, const ApplicationDirectory& directory, RunLoop& loop)
        : mirror(connection),
          applications(connection, mirror, directory, processExecutable),
          displays(connection, mirror),
          windowList(mirror),
          keyboard(connection),
          rawInput(connection, keyboard),
          accessibility(connection, mirror, rawInput),
          eventMonitors(connection, mirror, displays, rawInput),
          keyGrabs(connection, keyboard, mirror, rawInput),
          hotKeyCenter(connection, keyboard, keyGrabs),
          eventTaps(connection, keyboard, keyGrabs, rawInput),
          keyboardFocus(
              {connection, keyboard, eventTaps, hotKeyCenter, eventMonitors, rawInput, loop}),
          compositing(connection),
          beep(connection),
          dockedIcon(connection, displays, loop, "Tessellon", statusGlyphImage) {}

    x11::WindowMirror mirror;
    x11::X11Applications applications;
    x11::X11Displays displays;
    x11::X11WindowList windowList;
    x11::Keyboard keyboard;
    x11::RawInput rawInput;
    x11::X11Accessibility accessibility;
    x11::X11EventMonitors eventMonitors;
    x11::KeyGrabs keyGrabs;
    x11::X11HotKeyCenter hotKeyCenter;
    x11::X11EventTaps eventTaps;
    x11::X11KeyboardFocus keyboardFocus;
    x11::X11Compositing compositing;
    x11::X11Beep beep;
    x11::X11TrayIcon dockedIcon;
};

std::unique_ptr<Window> makeWindow(const Displays& displays, std::unique_ptr<QWidget> view,
                                   const QString& title, QSize size) {
    return std::make_unique<QtWindow>(displays,
                                      QtWindowContent{std::move(view), title, size, glyphIcon()});
}

/// What the features show, made by the toolkit.
AppViews makeViews(X11Desktop& desktop, UserDefaults& defaults) {
    return {[&desktop](const KeyBindings& bindings) {
                return std::make_unique<QtDragViews>(desktop.compositing, bindings);
            },
            [&desktop](const KeyBindings& bindings) {
                return std::make_unique<QtLauncherViews>(desktop.keyboardFocus, bindings,
                                                         desktop.compositing);
            },
            [&desktop, &defaults](const KeyBindings& /*bindings*/) {
                return std::make_unique<QtMenuViews>(desktop.keyboardFocus, defaults,
                                                     desktop.compositing);
            },
            [&desktop](const SettingsServices& services, SettingsPage page) {
                return makeWindow(desktop.displays, std::make_unique<SettingsView>(services, page),
                                  QStringLiteral("Tessellon Settings"), SettingsView::contentSize);
            },
            [&desktop](OnboardingModel& model) {
                return makeWindow(desktop.displays, std::make_unique<OnboardingView>(model),
                                  QStringLiteral("Welcome to Tessellon"),
                                  OnboardingView::contentSize);
            }};
}

/// Builds the application on the real sides of its ports and runs it to its end; gives the exit
/// code.
int runApplication(x11::Connection& connection, x11::InstanceLock& lock, QtRunLoop& loop,
                   DefaultsFile& defaults, const std::string& settings,
                   const std::function<void()>& displayLost) {
    const DesktopEntries directory(loop, applicationFolders());
    X11Desktop desktop(connection, directory, loop);
    const auto ownProgram = processExecutable(getpid()).value_or("");
    StatusNotifierItem notifierItem(statusGlyphImage, iconFolder(ownProgram));
    TrayStatusItem statusItem(notifierItem, desktop.dockedIcon);
    QtOwnApplication ownApplication(loop);
    ChildFeedSource feedSource(feedFetchersOf(ownProgram));
    AutostartEntry loginItem(standardAutostartPlaces(), ownProgram);
    QtUpdateViews updateViews(desktop.displays);
    FeedUpdater updater({feedSource, updateViews, defaults, loop, std::chrono::system_clock::now},
                        *runningVersion, TESSELLON_UPDATE_FEED_URL);
    LogindPowerEvents powerEvents;
    SessionService sessionService(environment("DISPLAY"));
    const x11::CommandDrag commandDrag(connection, desktop.mirror, desktop.rawInput,
                                       [&defaults] { return isDragSwitchedOn(defaults); });

    // Applications have to be known when the delegate loads the restore records, or those of
    // windows that a starting window manager has not taken over yet would be lost.
    Token look = x11::firstLook(connection, desktop.mirror, windowManagerStartTimeout);
    AppDelegate delegate({{desktop.accessibility, desktop.applications, desktop.displays,
                           desktop.windowList, desktop.eventMonitors, defaults},
                          desktop.hotKeyCenter,
                          desktop.eventTaps,
                          desktop.keyboardFocus,
                          powerEvents,
                          statusItem,
                          directory,
                          loginItem,
                          updater,
                          ownApplication,
                          desktop.beep,
                          loop,
                          TESSELLON_VERSION},
                         makeViews(desktop, defaults));
    look.reset();
    const Token lost = connection.lost().subscribe([&] {
        displayLost();
        loop.quit(exitCannotRun);
    });
    connection.attach(loop);
    delegate.applicationDidFinishLaunching();
    greet(delegate, settings);
    const Token wanted = sessionService.activated().subscribe([&delegate] { delegate.showMenu(); });
    const Token asked = lock.asked().subscribe([&delegate] { delegate.showMenu(); });
    // The shortcuts come first. The first one should not have to wait for the list of installed
    // applications.
    const Token warmUp = loop.after(Seconds{0}, [&] {
        statusItem.show();
        notifierItem.start();
        sessionService.start();
        directory.lookUp({"", "tessellon", "tessellon", ""});
        desktop.applications.running();
        powerEvents.start();
    });

    const int exitCode = loop.run();
    defaults.flush();
    return exitCode;
}

int run(int argc, char** argv) {
    TerminationSignals signals;
    BusProbe sessionBus(Bus::session, sessionBusTimeout);
    const auto connection = x11::Connection::open();
    if (!connection) {
        explainMissingDisplay();
        return exitCannotRun;
    }
    x11::InstanceLock lock(*connection);
    if (const auto exitCode = takeDisplay(lock)) {
        return *exitCode;
    }
    const auto defaultsPath = standardDefaultsPath();
    if (!defaultsPath) {
        logError("there is no home folder to keep the settings in; set HOME");
        return exitCannotRun;
    }
    // The display can be lost by us or by the toolkit, which ends the process when it notices
    // first.
    bool displayIsGone = false;
    std::function<void()> saveSettings;
    const auto endWithoutDisplay = [&] {
        if (!std::exchange(displayIsGone, true)) {
            logError("the X11 display is gone; tessellon saves the settings and ends");
        }
        if (saveSettings) {
            saveSettings();
        }
    };
    auto hiddenSessionBus = leaveSilentSessionBus(sessionBus);
    prepareToolkit(endWithoutDisplay);
    const QApplication application(argc, argv);
    hiddenSessionBus.reset();
    QtRunLoop loop;
    signals.serve(loop, [&loop] { loop.quit(EXIT_SUCCESS); });
    if (isWaylandSession()) {
        logNotice("in a Wayland session only X11 programs' windows can be moved");
    }

    DefaultsFile defaults(loop, *defaultsPath);
    saveSettings = [&defaults] { defaults.flush(); };
    const int exitCode = runApplication(*connection, lock, loop, defaults, defaultsPath->string(),
                                        endWithoutDisplay);
    saveSettings = nullptr;
    return exitCode;
}

int start(int argc, char** argv) {
    const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
    const auto commandLine = parseCommandLine(arguments.empty() ? arguments : arguments.subspan(1));
    switch (commandLine.request) {
        case CommandLine::Request::help:
            std::fputs(helpText().data(), stdout);
            return EXIT_SUCCESS;
        case CommandLine::Request::version:
            std::puts("tessellon " TESSELLON_VERSION);
            return EXIT_SUCCESS;
        case CommandLine::Request::mistake:
            logError(commandLine.mistake);
            return exitUsage;
        case CommandLine::Request::run:
            break;
    }
    return run(argc, argv);
}

}  // namespace
}  // namespace tessellon

int main(int argc, char** argv) {
    return tessellon::start(argc, argv);
}
