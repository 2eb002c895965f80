#include "updates/qt_update_views.h"

namespace tessellon {
namespace {

class QtUpdateWindow final : public UpdateWindow {
  public:
    QtUpdateWindow(UpdateModel& model, const UpdateView::OpenPage& openPage)
        : view_(new UpdateView(model, openPage)) {}
    QtUpdateWindow(const QtUpdateWindow&) = delete;
    QtUpdateWindow& operator=(const QtUpdateWindow&) = delete;
    // The view goes only after the event that closed it, the model at once.
    ~QtUpdateWindow() override {
        view_->detach();
        view_->hide();
        view_->deleteLater();
    }

    void bringToFront() override { view_->bringToFront(); }
    void showQuietly() override { view_->showQuietly(); }

  private:
    UpdateView* view_;
};

}  // namespace

std::unique_ptr<UpdateWindow> QtUpdateViews::makeWindow(UpdateModel& model) {
    return std::make_unique<QtUpdateWindow>(model, openPage_);
}

}  // namespace tessellon
