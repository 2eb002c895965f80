// What the welcome tour shows: the step, the permission, and what the user has tried so far.
#pragma once

#include "base/notification_center.h"
#include "base/signal.h"
#include "base/token.h"
#include "onboarding/tour.h"
#include "onboarding/tour_tasks.h"
#include "platform/accessibility.h"
#include "platform/login_item.h"
#include "platform/run_loop.h"
#include "platform/user_defaults.h"
#include "shortcuts/control_command_offer.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tessellon {

/// What the tour reads, changes and sets off. It owns none of them.
struct OnboardingServices {
    Accessibility& accessibility;
    UserDefaults& defaults;
    LoginItem& loginItem;
    KeyBindings& keyBindings;
    Hotkeys& hotkeys;
    NotificationCenter& notifications;
    RunLoop& runLoop;
};

class OnboardingModel {
  public:
    static constexpr int stepCount = 4;
    /// The step that asks for the permission.
    static constexpr int permissionStep = 1;

    /// `step` is the first to be shown, 0 to 3; `finish` runs when the user ends the tour, and may
    /// destroy the model. Watches the permission and the events from now on.
    OnboardingModel(const OnboardingServices& services, int step, std::function<void()> finish);
    OnboardingModel(const OnboardingModel&) = delete;
    OnboardingModel& operator=(const OnboardingModel&) = delete;

    const OnboardingServices& services() const { return services_; }

    int step() const { return step_; }
    void goTo(int step);

    /// Whether windows of other programs can be moved, looked at once a second.
    bool trusted() const { return trusted_; }
    /// Has the desktop help the user to the permission.
    void requestTrust();
    /// What the user can do where the desktop could not help, in a sentence; nothing once trusted.
    const std::optional<std::string>& trustNote() const { return trustNote_; }

    /// What has been tried, whatever step was shown.
    const std::set<Tour::Event>& done() const { return done_; }
    /// What there is to try, in order.
    std::vector<TourTask> tasks() const { return tourTasks(done_, shortcutTask_); }
    /// The modifiers that shortcuts are held with, such as "⌃⌥"; "" when most have none.
    const std::string& shortcutModifiers() const { return shortcutTask_.modifiers; }

    /// What the shortcut that is to be tried does.
    SnapAction actionToTry() const { return shortcutTask_.action; }

    /// Why to offer ⌃⌘ instead of ⌃⌥, in a sentence: another program has the shortcut that would be
    /// tried first. Nothing when there is no reason. While a shortcut is recorded it stays as it
    /// was before.
    const std::optional<std::string>& controlCommandReason() const { return controlCommandReason_; }
    void useControlCommand();

    /// Whether the program starts at login, as its switch shows it; also when it was changed in the
    /// settings.
    bool launchAtLogin() const { return launchAtLogin_; }
    /// What the user should know of the last change of it.
    const std::optional<std::string>& loginNote() const { return loginNote_; }
    /// Registers the program or takes it off, unless that is done already. The switch goes back
    /// when it fails.
    void setLaunchAtLogin(bool launches);

    /// Ends the tour for good; only the first call does.
    void finish();

    /// Stops watching, once the tour is not to be seen any more.
    void stop();

    /// Emitted after something of the above has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    void poll();
    void updateShortcuts();
    std::optional<std::string> reasonForControlCommand() const;
    bool isRegisteredAtLogin() const;
    void followLoginItem();

    OnboardingServices services_;
    int step_;
    std::function<void()> finish_;
    bool trusted_;
    std::optional<std::string> trustNote_;
    std::set<Tour::Event> done_;
    ShortcutTask shortcutTask_;
    ControlCommandOffer offer_;
    std::optional<std::string> controlCommandReason_;
    bool launchAtLogin_;
    std::optional<std::string> loginNote_;
    Token timer_;
    Token observer_;
    Token hotkeysChanged_;
    Token offerChanged_;
    Token loginItemChanged_;
    Signal<> changed_;
};

}  // namespace tessellon
