// The window of the updates on the screen.
#pragma once

#include "updates/update_view.h"

#include <QDesktopServices>
#include <memory>
#include <utility>

namespace tessellon {

class QtUpdateViews final : public UpdateViews {
  public:
    explicit QtUpdateViews(UpdateView::OpenPage openPage = QDesktopServices::openUrl)
        : openPage_(std::move(openPage)) {}

    std::unique_ptr<UpdateWindow> makeWindow(UpdateModel& model) override;

  private:
    UpdateView::OpenPage openPage_;
};

}  // namespace tessellon
