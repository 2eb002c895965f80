#include "drag/qt_drag_views.h"

#include "drag/hints_view.h"
#include "drag/overlay_view.h"
#include "platform/qt/qt_panel.h"

#include <QString>
#include <utility>

namespace tessellon {
namespace {

class QtHintsPanel final : public QtPanel<HintsPanel, HintsView> {
  public:
    explicit QtHintsPanel(Compositing& compositing)
        : QtPanel(PanelWindowPointer<HintsView>(new HintsView(compositing))) {}

    void setHints(std::vector<Hint> hints) override { window().setHints(std::move(hints)); }
    void setActive(std::optional<SnapAction> action) override { window().setActive(action); }
};

class QtOverlayPanel final : public QtPanel<OverlayPanel, OverlayView> {
  public:
    QtOverlayPanel(Compositing& compositing, const KeyBindings& bindings)
        : QtPanel(PanelWindowPointer<OverlayView>(new OverlayView(compositing))),
          bindings_(bindings) {}

    void setAction(SnapAction action) override {
        window().setAction(action, QString::fromStdString(bindings_.shortcutText(action)));
    }

  private:
    const KeyBindings& bindings_;
};

}  // namespace

std::unique_ptr<HintsPanel> QtDragViews::makeHintsPanel() {
    return std::make_unique<QtHintsPanel>(compositing_);
}

std::unique_ptr<OverlayPanel> QtDragViews::makeOverlayPanel() {
    return std::make_unique<QtOverlayPanel>(compositing_, bindings_);
}

}  // namespace tessellon
