// Panels with the keyboard that only remember what happened to them.
#pragma once

#include "platform/panel.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

/// What a test sees of a panel, also after the panel is gone.
struct KeyPanelState {
    Rect frame;
    bool exists = true;
    bool visible = false;
    bool key = false;
    int orderedOut = 0;
};

class FakeKeyPanel final : public KeyPanel {
  public:
    /// `model` expires with what the panel shows.
    FakeKeyPanel(std::shared_ptr<KeyPanelState> state, std::weak_ptr<void> model)
        : state_(std::move(state)), model_(std::move(model)) {}
    ~FakeKeyPanel() override {
        EXPECT_FALSE(model_.expired()) << "the model outlives the panel";
        state_->exists = false;
    }
    FakeKeyPanel(const FakeKeyPanel&) = delete;
    FakeKeyPanel& operator=(const FakeKeyPanel&) = delete;

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
    std::shared_ptr<KeyPanelState> state_;
    std::weak_ptr<void> model_;
};

/// Makes the panels of a feature, and keeps what happened to each.
class FakeKeyPanels {
  public:
    /// A panel for the model that `callback` is a member of.
    template <typename... Arguments>
    std::unique_ptr<KeyPanel> make(const Size& size, std::function<void(Arguments...)>& callback) {
        // What the model holds goes with it.
        auto sentinel = std::make_shared<int>();
        const std::weak_ptr<void> model = sentinel;
        callback = [inner = callback, sentinel = std::move(sentinel)](Arguments... arguments) {
            inner(arguments...);
        };
        states.push_back(std::make_shared<KeyPanelState>());
        states.back()->frame = {0, 0, size.width, size.height};
        auto made = std::make_unique<FakeKeyPanel>(states.back(), model);
        panel = made.get();
        return made;
    }

    std::vector<std::shared_ptr<KeyPanelState>> states;
    /// The one made last.
    FakeKeyPanel* panel = nullptr;
};

}  // namespace tessellon
