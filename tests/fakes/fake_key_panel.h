// Panels with the keyboard that only remember what happened to them.
#pragma once

#include "platform/panel.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

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
    /// `atEnd` is called when the panel is destroyed.
    FakeKeyPanel(std::shared_ptr<KeyPanelState> state, std::function<void()> atEnd)
        : state_(std::move(state)), atEnd_(std::move(atEnd)) {}
    ~FakeKeyPanel() override {
        atEnd_();
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
    std::function<void()> atEnd_;
};

/// Makes the panels of a feature, and keeps what happened to each.
class FakeKeyPanels {
  public:
    std::unique_ptr<KeyPanel> make(const Size& size, std::function<void()> atEnd) {
        states.push_back(std::make_shared<KeyPanelState>());
        states.back()->frame = {0, 0, size.width, size.height};
        auto made = std::make_unique<FakeKeyPanel>(states.back(), std::move(atEnd));
        panel = made.get();
        return made;
    }

    std::vector<std::shared_ptr<KeyPanelState>> states;
    /// The one made last.
    FakeKeyPanel* panel = nullptr;
};

}  // namespace tessellon
