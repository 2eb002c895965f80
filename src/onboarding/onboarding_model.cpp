#include "onboarding/onboarding_model.h"

#include "app/notification_names.h"

#include <any>
#include <utility>

namespace tessellon {
namespace {

constexpr Seconds pollPeriod{1.0};

}  // namespace

OnboardingModel::OnboardingModel(const OnboardingServices& services, int step,
                                 std::function<void()> finish)
    : services_(services),
      step_(step),
      finish_(std::move(finish)),
      trusted_(services.accessibility.isTrusted()),
      shortcutTask_(shortcutTask(services.keyBindings, services.hotkeys)),
      offer_(services.keyBindings, services.hotkeys, services.notifications),
      controlCommandReason_(reasonForControlCommand()),
      launchAtLogin_(isRegisteredAtLogin()) {
    timer_ = services_.runLoop.every(pollPeriod, [this] { poll(); });
    observer_ = services_.notifications.observe(
        notification::tourEvent, [this](const NotificationCenter::Object& object) {
            const auto* const text = std::any_cast<std::string>(&object);
            const auto event = text != nullptr ? Tour::fromRawValue(*text) : std::nullopt;
            if (event && done_.insert(*event).second) {
                changed_.emit();
            }
        });
    hotkeysChanged_ = services_.notifications.observe(
        notification::hotkeysChanged,
        [this](const NotificationCenter::Object& /*object*/) { updateShortcuts(); });
    offerChanged_ = offer_.changed().subscribe([this] { updateShortcuts(); });
    loginItemChanged_ = services_.loginItem.changed().subscribe([this] { followLoginItem(); });
}

void OnboardingModel::goTo(int step) {
    if (std::exchange(step_, step) != step) {
        changed_.emit();
    }
}

void OnboardingModel::requestTrust() {
    trustNote_ = services_.accessibility.requestTrust();
    poll();
    changed_.emit();
}

void OnboardingModel::useControlCommand() {
    offer_.accept();
}

void OnboardingModel::setLaunchAtLogin(bool launches) {
    const bool current = isRegisteredAtLogin();
    launchAtLogin_ = launches;
    if (launches != current) {
        auto& item = services_.loginItem;
        if (auto problem = launches ? item.registerItem() : item.unregisterItem()) {
            launchAtLogin_ = current;
            loginNote_ = std::move(problem);
        }
    }
    changed_.emit();
}

void OnboardingModel::finish() {
    // The model may not survive it.
    if (const auto finish = std::exchange(finish_, nullptr)) {
        finish();
    }
}

void OnboardingModel::stop() {
    timer_.reset();
    observer_.reset();
    hotkeysChanged_.reset();
    offerChanged_.reset();
    loginItemChanged_.reset();
}

void OnboardingModel::poll() {
    const bool trusted = services_.accessibility.isTrusted();
    if (std::exchange(trusted_, trusted) == trusted) {
        return;
    }
    if (trusted) {
        trustNote_.reset();
    }
    changed_.emit();
}

void OnboardingModel::updateShortcuts() {
    // While a shortcut is recorded none is registered, which says nothing of what works.
    if (services_.hotkeys.recordingPause()) {
        return;
    }
    auto task = shortcutTask(services_.keyBindings, services_.hotkeys);
    auto reason = reasonForControlCommand();
    const bool isSame = task == shortcutTask_ && reason == controlCommandReason_;
    shortcutTask_ = std::move(task);
    controlCommandReason_ = std::move(reason);
    if (!isSame) {
        changed_.emit();
    }
}

std::optional<std::string> OnboardingModel::reasonForControlCommand() const {
    const auto& taken = services_.hotkeys.takenTargets();
    if (!offer_.isDue() || !taken.contains(HotkeyTarget::snap(SnapAction::leftHalf))) {
        return std::nullopt;
    }
    return "Another program holds " + services_.keyBindings.shortcutText(SnapAction::leftHalf) +
           " here.";
}

void OnboardingModel::followLoginItem() {
    launchAtLogin_ = isRegisteredAtLogin();
    loginNote_.reset();
    if (services_.loginItem.status() == LoginItemStatus::requiresApproval) {
        loginNote_ = "Approve in System Settings › Login Items";
    }
    changed_.emit();
}

bool OnboardingModel::isRegisteredAtLogin() const {
    return services_.loginItem.status() != LoginItemStatus::notRegistered;
}

}  // namespace tessellon
