// A window that only remembers what happened to it.
#pragma once

#include "platform/window.h"

#include <memory>

namespace tessellon {

/// What became of one window; outlives it.
struct FakeWindowState {
    bool exists = true;
    bool visible = false;
    int timesInFront = 0;
};

class FakeWindow final : public Window {
  public:
    explicit FakeWindow(std::shared_ptr<FakeWindowState> state) : state_(std::move(state)) {}
    ~FakeWindow() override { *state_ = {false, false, state_->timesInFront}; }
    FakeWindow(const FakeWindow&) = delete;
    FakeWindow& operator=(const FakeWindow&) = delete;

    void makeKeyAndOrderFront() override {
        state_->visible = true;
        ++state_->timesInFront;
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
