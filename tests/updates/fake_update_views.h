// A window of the updates that only remembers what was asked of it.
#pragma once

#include "fakes/fake_window.h"
#include "updates/update_model.h"

#include <memory>

namespace tessellon {

class FakeUpdateViews final : public UpdateViews {
  public:
    std::unique_ptr<Window> makeWindow(UpdateModel& shown) override {
        ++windows;
        model_ = &shown;
        auto made = std::make_unique<FakeWindow>(state);
        window_ = made.get();
        return made;
    }

    /// The model of the open window, else null.
    const UpdateModel* model() const { return state->exists ? model_ : nullptr; }

    /// Closes the window as the user does.
    void close() { window_->close(); }

    int windows = 0;
    /// Of all windows.
    std::shared_ptr<FakeWindowState> state =
        std::make_shared<FakeWindowState>(FakeWindowState{.exists = false});

  private:
    const UpdateModel* model_ = nullptr;
    FakeWindow* window_ = nullptr;
};

}  // namespace tessellon
