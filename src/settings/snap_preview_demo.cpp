#include "settings/snap_preview_demo.h"

#include "app/preferences.h"
#include "engine/placement.h"

#include <utility>

namespace tessellon {
namespace {

constexpr Seconds duration{1.4};
constexpr SnapAction shownAction = SnapAction::leftHalf;

}  // namespace

SnapPreviewDemo::SnapPreviewDemo(const WindowEngine& engine, RunLoop& runLoop, MakeViews makeViews)
    : engine_(engine), runLoop_(runLoop), makeViews_(std::move(makeViews)) {}

SnapPreviewDemo::~SnapPreviewDemo() {
    hide();
}

void SnapPreviewDemo::show() {
    const auto screen = engine_.screens().mainScreen();
    if (!screen) {
        return;
    }
    if (!overlay_) {
        views_ = makeViews_();
        overlay_.emplace(*views_);
    }
    const Rect landing = placeUnit(*unitRect(shownAction), engine_.screens().usableFrame(*screen),
                                   effectiveGap(engine_.services().defaults));
    overlay_->show(shownAction, engine_.screens().toAccessibilityRect(landing));
    hiding_ = runLoop_.after(duration, [this] { hide(); });
}

void SnapPreviewDemo::hide() {
    hiding_.reset();
    if (overlay_) {
        overlay_->hide();
    }
}

}  // namespace tessellon
