// A panel of the status item that only remembers what happened to it.
#pragma once

#include "menu/status_menu.h"

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

inline constexpr Size menuPanelSize{330, 600};

/// What a test sees of a panel, also after the panel is gone.
struct MenuPanelState {
    Rect frame{0, 0, menuPanelSize.width, menuPanelSize.height};
    bool exists = true;
    bool visible = false;
    bool key = false;
    int orderedOut = 0;
};

class FakeMenuPanel final : public KeyPanel {
  public:
    FakeMenuPanel(std::shared_ptr<MenuPanelState> state, MenuModel& model)
        : state_(std::move(state)) {
        // What the model holds goes with it.
        auto sentinel = std::make_shared<int>();
        model_ = sentinel;
        model.quit = [quit = model.quit, sentinel = std::move(sentinel)] { quit(); };
    }
    ~FakeMenuPanel() override {
        EXPECT_FALSE(model_.expired()) << "the model outlives the panel";
        state_->exists = false;
    }
    FakeMenuPanel(const FakeMenuPanel&) = delete;
    FakeMenuPanel& operator=(const FakeMenuPanel&) = delete;

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
    std::shared_ptr<MenuPanelState> state_;
    std::weak_ptr<int> model_;
};

class FakeMenuViews final : public MenuViews {
  public:
    std::unique_ptr<KeyPanel> makePanel(MenuModel& model, const Rect& area) override {
        areas.push_back(area);
        if (!available) {
            return nullptr;
        }
        states.push_back(std::make_shared<MenuPanelState>());
        auto made = std::make_unique<FakeMenuPanel>(states.back(), model);
        panel = made.get();
        return made;
    }

    bool available = true;
    std::vector<std::shared_ptr<MenuPanelState>> states;
    /// What each panel was told that it must not leave.
    std::vector<Rect> areas;
    FakeMenuPanel* panel = nullptr;
};

}  // namespace tessellon
