#include "onboarding/onboarding_model.h"

#include "onboarding_fixture.h"

#include <any>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using Event = Tour::Event;
using State = TaskState;

class OnboardingModelTest : public testing::Test, protected Onboarding {
  protected:
    std::vector<State> states() const {
        std::vector<State> found;
        for (const auto& task : model->tasks()) {
            found.push_back(task.state);
        }
        return found;
    }
    std::string shortcutTitle() const { return model->tasks().front().title; }
    std::string shortcutLine() const { return model->tasks().front().line; }
};

TEST_F(OnboardingModelTest, ThePermissionIsSeenWithinASecond) {
    desktop.setTrusted(false);
    start(1);
    int changes = 0;
    const auto token = model->changed().subscribe([&] { ++changes; });
    passTime();
    EXPECT_EQ(changes, 0) << "nothing new";

    model->requestTrust();
    EXPECT_EQ(desktop.trustRequests(), 1);
    EXPECT_EQ(model->trustNote(), "Start a window manager.");
    desktop.setTrusted(true);
    EXPECT_FALSE(model->trusted());
    passTime();
    EXPECT_TRUE(model->trusted());
    EXPECT_FALSE(model->trustNote());
    EXPECT_EQ(changes, 2);
    desktop.setTrusted(false);
    passTime();
    EXPECT_FALSE(model->trusted()) << "and when it goes";

    model->stop();
    desktop.setTrusted(true);
    passTime();
    happens(Event::drag);
    EXPECT_FALSE(model->trusted());
    EXPECT_TRUE(model->done().empty());
}

TEST_F(OnboardingModelTest, EventsCountOnEveryStepAndOthersDoNot) {
    start();
    int changes = 0;
    const auto token = model->changed().subscribe([&] { ++changes; });
    happens(std::any());
    happens(std::string("Shortcut"));
    happens(7);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(states(), (std::vector{State::current, State::next, State::next}));

    happens(Event::launcher);
    happens(Event::launcher);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(states(), (std::vector{State::current, State::next, State::done}));
    happens(Event::shortcut);
    EXPECT_EQ(states(), (std::vector{State::done, State::current, State::done}));
    EXPECT_EQ(shortcutLine(), "Nice!");
    happens(Event::drag);
    EXPECT_EQ(states(), (std::vector{State::done, State::done, State::done}));
}

TEST_F(OnboardingModelTest, NamesAShortcutThatWorks) {
    start(2);
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥← to snap left") << "before anything can be registered";
    EXPECT_EQ(shortcutLine(), "Any ⌃⌥ shortcut counts.");
    registerHotkeys();
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥← to snap left");
    EXPECT_FALSE(model->controlCommandReason());

    hold(SnapAction::rightHalf);
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥← to snap left");
    EXPECT_FALSE(model->controlCommandReason()) << "the one that is named works";
    for (const auto action : actionGroups[0]) {
        hold(action);
    }
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥U to snap top left");
    EXPECT_EQ(shortcutLine(), "Any ⌃⌥ shortcut counts.");
    EXPECT_EQ(model->controlCommandReason(), "Another program holds ⌃⌥← here.");
    hotkeys.setRecordingPause(true);
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥U to snap top left");
    EXPECT_TRUE(model->controlCommandReason());
    hotkeys.setRecordingPause(false);

    int changes = 0;
    const auto token = model->changed().subscribe([&] { ++changes; });
    center.holdByOthers(96, 0);
    bindings.assignCombo(96, 0, "F5", HotkeyTarget::snap(SnapAction::leftHalf));
    EXPECT_EQ(model->controlCommandReason(), "Another program holds F5 here.");
    EXPECT_EQ(changes, 1);
    model->useControlCommand();
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌘← to snap left");
    EXPECT_EQ(shortcutLine(), "Any ⌃⌘ shortcut counts.");
    EXPECT_EQ(model->shortcutModifiers(), "⌃⌘");
    EXPECT_FALSE(model->controlCommandReason());
}

TEST_F(OnboardingModelTest, FollowsWhatTheUserHasBound) {
    const auto left = HotkeyTarget::snap(SnapAction::leftHalf);
    bindings.assignCombo(96, 0, "F5", left);
    start(2);
    EXPECT_EQ(shortcutTitle(), "Press F5 to snap left") << "before anything can be registered";
    registerHotkeys();
    EXPECT_EQ(shortcutTitle(), "Press F5 to snap left");
    EXPECT_EQ(shortcutLine(), "Any ⌃⌥ shortcut counts.") << "as most are held";
    bindings.setCombo({}, left);
    hotkeys.registerHotkeys();
    EXPECT_EQ(shortcutTitle(), "Press ⌃⌥→ to snap right");
    EXPECT_FALSE(model->controlCommandReason()) << "nothing is taken";

    for (const auto action : allSnapActions) {
        bindings.setCombo({}, HotkeyTarget::snap(action));
    }
    bindings.assignCombo(97, 0, "F6", HotkeyTarget::snap(SnapAction::center));
    EXPECT_EQ(shortcutTitle(), "Press F6 to center");
    EXPECT_EQ(shortcutLine(), "Any shortcut counts.");
}

TEST_F(OnboardingModelTest, LaunchAtLoginIsChangedOnlyWhereItDiffers) {
    loginItem.setStatus(LoginItemStatus::requiresApproval);
    start(3);
    EXPECT_TRUE(model->launchAtLogin());
    model->setLaunchAtLogin(true);
    EXPECT_EQ(loginItem.registrations(), 0);
    model->setLaunchAtLogin(false);
    EXPECT_EQ(loginItem.removals(), 1);
    EXPECT_FALSE(model->launchAtLogin() || model->loginNote());

    loginItem.setRequiresApproval(true);
    model->setLaunchAtLogin(true);
    EXPECT_EQ(model->loginNote(), "Approve in System Settings › Login Items");
    EXPECT_TRUE(model->launchAtLogin());

    loginItem.setProblem("The disk is full.");
    model->setLaunchAtLogin(false);
    EXPECT_EQ(model->loginNote(), "The disk is full.");
    EXPECT_TRUE(model->launchAtLogin()) << "as it really is";
    loginItem.setProblem({});
    model->setLaunchAtLogin(false);
    EXPECT_FALSE(model->launchAtLogin() || model->loginNote());

    loginItem.setStatus(LoginItemStatus::enabled);
    model->setLaunchAtLogin(true);
    EXPECT_TRUE(model->launchAtLogin()) << "done by somebody else meanwhile";
    EXPECT_EQ(loginItem.registrations(), 1);

    EXPECT_FALSE(loginItem.unregisterItem());
    EXPECT_FALSE(model->launchAtLogin()) << "the settings have the same switch";
}

}  // namespace
}  // namespace tessellon
