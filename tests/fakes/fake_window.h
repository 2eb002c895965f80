// A window that only remembers what happened to it.
#pragma once

#include "platform/window.h"

#include <memory>
#include <utility>

namespace tessellon {

/// What became of a window, or of several one after the other; outlives them.
struct FakeWindowState {
    bool exists = true;
    bool visible = false;
    int timesInFront = 0;
    /// How often it was shown while the keyboard stayed elsewhere.
    int timesQuiet = 0;
};

class FakeWindow final : public Window {
  public:
    explicit FakeWindow(std::shared_ptr<FakeWindowState> state) : state_(std::move(state)) {
        state_->exists = true;
    }
    ~FakeWindow() override { state_->exists = state_->visible = false; }
    FakeWindow(const FakeWindow&) = delete;
    FakeWindow& operator=(const FakeWindow&) = delete;

    void makeKeyAndOrderFront() override {
        state_->visible = true;
        ++state_->timesInFront;
    }
    void orderFront() override {
        state_->timesQuiet += state_->visible ? 0 : 1;
        state_->visible = true;
    }
    bool isVisible() const override { return state_->visible; }

    /// As the user does it.
    void close() {
        state_->visible = false;
        closed_.emit();
    }

  private:
    std::shared_ptr<FakeWindowState> state_;
};

}  // namespace tessellon
