#include "onboarding/onboarding_model.h"

#include "app/notification_names.h"

#include <any>
#include <string>
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
      trusted_(services.accessibility.isTrusted()) {
    timer_ = services_.runLoop.every(pollPeriod, [this] { poll(); });
    observer_ = services_.notifications.observe(
        notification::tourEvent, [this](const NotificationCenter::Object& object) {
            const auto* const text = std::any_cast<std::string>(&object);
            const auto event = text != nullptr ? Tour::fromRawValue(*text) : std::nullopt;
            if (event && done_.insert(*event).second) {
                changed_.emit();
            }
        });
}

void OnboardingModel::goTo(int step) {
    if (std::exchange(step_, step) != step) {
        changed_.emit();
    }
}

void OnboardingModel::finish() const {
    const auto finish = finish_;  // the model may not survive it
    finish();
}

void OnboardingModel::stop() {
    timer_.reset();
    observer_.reset();
}

void OnboardingModel::poll() {
    const bool trusted = services_.accessibility.isTrusted();
    if (std::exchange(trusted_, trusted) != trusted) {
        changed_.emit();
    }
}

}  // namespace tessellon
