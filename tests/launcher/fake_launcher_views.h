// A launcher panel that only remembers what happened to it.
#pragma once

#include "launcher/launcher.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

inline constexpr Size launcherPanelSize{472, 632};

/// What a test sees of a panel, also after the panel is gone.
struct LauncherPanelState {
    Rect frame{0, 0, launcherPanelSize.width, launcherPanelSize.height};
    bool exists = true;
    bool visible = false;
    bool key = false;
    int orderedOut = 0;
};

class FakeLauncherPanel final : public KeyPanel {
  public:
    FakeLauncherPanel(std::shared_ptr<LauncherPanelState> state, LauncherModel& model)
        : state_(std::move(state)), model_(model) {}
    ~FakeLauncherPanel() override {
        EXPECT_EQ(model_.appName().empty(), false) << "the model outlives the panel";
        state_->exists = false;
    }
    FakeLauncherPanel(const FakeLauncherPanel&) = delete;
    FakeLauncherPanel& operator=(const FakeLauncherPanel&) = delete;

    Rect frame() const override { return state_->frame; }
    void setFrame(const Rect& frame) override { state_->frame = frame; }
    bool isVisible() const override { return state_->visible; }
    void orderFrontRegardless() override { state_->visible = true; }
    void orderOut() override {
        state_->visible = false;
        ++state_->orderedOut;
    }
    void makeKeyAndOrderFront() override {
        state_->visible = true;
        state_->key = true;
    }
    void resignKey() { resignedKey_.emit(); }

  private:
    std::shared_ptr<LauncherPanelState> state_;
    LauncherModel& model_;
};

class FakeLauncherViews final : public LauncherViews {
  public:
    std::unique_ptr<KeyPanel> makePanel(LauncherModel& model) override {
        states.push_back(std::make_shared<LauncherPanelState>());
        auto made = std::make_unique<FakeLauncherPanel>(states.back(), model);
        panel = made.get();
        return made;
    }

    std::vector<std::shared_ptr<LauncherPanelState>> states;
    FakeLauncherPanel* panel = nullptr;
};

}  // namespace tessellon
