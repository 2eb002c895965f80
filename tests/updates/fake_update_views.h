// A window of the updates that only remembers what was asked of it.
#pragma once

#include "updates/update_model.h"

#include <memory>

namespace tessellon {

class FakeUpdateViews final : public UpdateViews {
  public:
    std::unique_ptr<UpdateWindow> makeWindow(UpdateModel& shown) override {
        model = &shown;
        ++windows;
        return std::make_unique<Window>(*this);
    }

    /// The model of the open window, else null.
    UpdateModel* model = nullptr;
    int windows = 0;
    int timesInFront = 0;
    int timesQuiet = 0;

  private:
    class Window final : public UpdateWindow {
      public:
        explicit Window(FakeUpdateViews& views) : views_(views) {}
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        ~Window() override { views_.model = nullptr; }
        void bringToFront() override { ++views_.timesInFront; }
        void showQuietly() override { ++views_.timesQuiet; }

      private:
        FakeUpdateViews& views_;
    };
};

}  // namespace tessellon
