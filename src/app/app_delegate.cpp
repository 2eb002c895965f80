#include "app/app_delegate.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "arrangements/apply.h"
#include "base/log.h"
#include "shortcuts/key_labels.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace tessellon {
namespace {

constexpr Seconds messagingTimeout{0.5};
constexpr Seconds healthCheckPeriod{2.0};

// A session may start its window manager after the programs of the user.
constexpr Seconds windowManagerGrace{5.0};

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace

AppDelegate::AppDelegate(const AppServices& services, AppViews views)
    : services_(services),
      views_(std::move(views)),
      engine_(services.engine),
      arrangements_(services.engine.defaults, notifications_),
      keyBindings_(services.engine.defaults, arrangements_),
      hotkeys_(services.hotKeyCenter, keyBindings_, notifications_) {}

AppDelegate::Menu::Menu(std::unique_ptr<MenuViews> made, AppDelegate& app)
    : views(std::move(made)),
      menu({app.engine_, app.arrangements_, app.services_.statusItem, *views, app.services_.updater,
            app.services_.application, app.services_.beep, app.services_.runLoop},
           [&app] { app.openSettings(); }) {}

void AppDelegate::applicationDidFinishLaunching() {
    services_.engine.accessibility.setMessagingTimeout(messagingTimeout);
    registerPreferenceDefaults(services_.engine.defaults);
    services_.updater.start();
    menu_ = std::make_unique<Menu>(views_.menu(keyBindings_), *this);
    if (services_.engine.accessibility.isTrusted() && !started_) {
        startServices();
    }
    healthTimer_ = services_.runLoop.every(healthCheckPeriod, [this] { healthCheck(); });
    // What is on screen was shown on top of a window manager that may be gone; a new one needs no
    // waiting for the timer.
    trustChanged_ = services_.engine.accessibility.trustChanged().subscribe([this] {
        resetTransientUI();
        healthCheck();
    });
    woke_ = services_.powerEvents.didWake().subscribe([this] {
        resetTransientUI();
        healthCheck();
    });
    displaysChanged_ =
        services_.engine.displays.changed().subscribe([this] { resetTransientUI(); });
    showOnboardingIfDue();
    tourWanted_ =
        notifications_.observe(notification::showTour, [this](const auto&) { showOnboarding(); });
    // Shortcuts that came with an edit of the settings file count from now on, and so does that of
    // tiling when it is switched on.
    settingsReloaded_ = services_.engine.defaults.reloaded().subscribe(
        [this] { hotkeys_.registerChangedBindings(); });
    tilingSwitched_ = services_.engine.defaults.changed().subscribe([this](std::string_view key) {
        if (key == preference::tilingEnabled) {
            hotkeys_.registerChangedBindings();
        }
    });
    // An arrangement that is deleted lets go of its combination.
    arrangementsChanged_ =
        notifications_.observe(notification::arrangementsChanged,
                               [this](const auto&) { hotkeys_.registerChangedBindings(); });
}

void AppDelegate::startServices() {
    started_ = true;
    hotkeysChanged_ = notifications_.observe(notification::hotkeysChanged,
                                             [this](const auto&) { reportTakenShortcuts(); });
    hotkeys_.setHandler([this](const HotkeyTarget& target) { perform(target); });
    drag().start();
    commandTap().start();
}

void AppDelegate::showMenu() {
    if (menu_) {
        menu_->menu.show();
    }
}

void AppDelegate::openSettings(std::optional<SettingsPage> page) {
    if (settingsWindow_) {
        if (page) {
            notifications_.post(notification::settingsSelect, *page);
        }
    } else {
        settingsWindow_ = views_.settings(settingsServices(), page.value_or(SettingsPage::general));
    }
    settingsWindow_->makeKeyAndOrderFront();
}

SettingsServices AppDelegate::settingsServices() {
    return {engine_,
            services_.engine.defaults,
            keyBindings_,
            hotkeys_,
            recorder(),
            arrangements_,
            services_.directory,
            services_.loginItem,
            services_.updater,
            notifications_,
            services_.runLoop,
            [this] { return views_.drag(keyBindings_); },
            services_.version};
}

AppDelegate::Onboarding::Onboarding(AppDelegate& app)
    : model({app.services_.engine.accessibility, app.services_.engine.defaults,
             app.services_.loginItem, app.keyBindings_, app.hotkeys_, app.notifications_,
             app.services_.runLoop},
            app.services_.engine.defaults.boolForKey(preference::onboarded) &&
                    !app.services_.engine.accessibility.isTrusted()
                ? OnboardingModel::permissionStep
                : 0,
            [&app] {
                app.services_.engine.defaults.setBool(preference::onboarded, true);
                app.forgetOnboarding();
            }),
      window(app.views_.onboarding(model)),
      closed(window->closed().subscribe([&app] { app.forgetOnboarding(); })) {}

void AppDelegate::showOnboarding() {
    tourDue_.reset();
    tourForgotten_.reset();
    onboardingWindow_.reset();
    onboardingWindow_ = std::make_unique<Onboarding>(*this);
    onboardingWindow_->window->makeKeyAndOrderFront();
}

void AppDelegate::forgetOnboarding() {
    onboardingWindow_->model.stop();
    // The window is what asks for it, in the middle of an event of its own.
    tourForgotten_ = services_.runLoop.after(Seconds{0}, [this] { onboardingWindow_.reset(); });
}

void AppDelegate::showOnboardingIfDue() {
    if (!services_.engine.defaults.boolForKey(preference::onboarded)) {
        showOnboarding();
    } else if (!services_.engine.accessibility.isTrusted()) {
        tourDue_ = services_.runLoop.after(windowManagerGrace, [this] {
            if (!services_.engine.accessibility.isTrusted()) {
                showOnboarding();
            }
        });
    }
}

Recorder& AppDelegate::recorder() {
    if (!recorder_) {
        recorder_.emplace(Recorder::Services{keyBindings_, hotkeys_, services_.engine.eventMonitors,
                                             services_.keyboardFocus, services_.application,
                                             services_.beep, notifications_});
    }
    return *recorder_;
}

DragSnapper& AppDelegate::drag() {
    if (!drag_) {
        drag_ = std::make_unique<Drag>(views_.drag(keyBindings_), *this);
    }
    return drag_->snapper;
}

Launcher& AppDelegate::launcher() {
    if (!launcher_) {
        launcher_ = std::make_unique<LauncherFeature>(views_.launcher(keyBindings_), *this);
    }
    return launcher_->launcher;
}

RightCommandSlash& AppDelegate::commandTap() {
    if (!commandTap_) {
        commandTap_.emplace(services_.eventTaps, [this] { launcher().toggle(); });
    }
    return *commandTap_;
}

void AppDelegate::healthCheck() {
    if (!services_.engine.accessibility.isTrusted()) {
        return;
    }
    if (!started_) {
        startServices();
    }
    commandTap().checkHealth();
}

void AppDelegate::resetTransientUI() {
    if (drag_) {
        drag_->snapper.reset();
        drag_->snapper.hints().teardown();
    }
    if (launcher_) {
        launcher_->launcher.close(Launcher::Activation::none);
    }
    if (menu_) {
        menu_->menu.close();
    }
}

void AppDelegate::reportTakenShortcuts() {
    if (hotkeys_.recordingPause()) {
        return;  // nothing is registered, so nothing is known to be taken
    }
    std::string taken;
    for (const auto& [target, combo] : keyBindings_.bindings()) {
        if (hotkeys_.takenTargets().contains(target)) {
            taken += taken.empty() ? "" : ", ";
            taken += displayText(combo) + " (" + keyBindings_.title(target) + ")";
        }
    }
    if (std::exchange(reportedTaken_, taken) != taken && !taken.empty()) {
        logNotice(
            "these shortcuts are taken, mostly by the window manager; free them there and start "
            "tessellon again (⌃ is Control, ⌥ Alt, ⇧ Shift, ⌘ Super): " +
            taken);
    }
}

void AppDelegate::perform(const HotkeyTarget& target) {
    std::visit(Overloaded{
                   [this](const HotkeyTarget::Snap& snap) {
                       engine_.snap(snap.action);
                       notifications_.post(notification::tourEvent, std::string("shortcut"));
                   },
                   [this](const HotkeyTarget::Arrangement& wanted) {
                       const auto stored = arrangements_.load();
                       if (const auto* found = findArrangement(stored, wanted.id)) {
                           applyArrangement(engine_, *found);
                       }
                   },
                   [this](const HotkeyTarget::Tile&) { engine_.tile(); },
               },
               target.kind);
}

}  // namespace tessellon
