// The window of the updates on the screen.
#pragma once

#include "platform/displays.h"
#include "updates/update_view.h"

#include <QDesktopServices>
#include <memory>
#include <utility>

namespace tessellon {

class QtUpdateViews final : public UpdateViews {
  public:
    /// The displays must outlive the windows.
    explicit QtUpdateViews(const Displays& displays,
                           UpdateView::OpenPage openPage = QDesktopServices::openUrl)
        : displays_(displays), openPage_(std::move(openPage)) {}

    std::unique_ptr<Window> makeWindow(UpdateModel& model) override;

  private:
    const Displays& displays_;
    UpdateView::OpenPage openPage_;
};

}  // namespace tessellon
