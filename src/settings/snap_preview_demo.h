// Shows for a moment what the preview of a snap looks like.
#pragma once

#include "base/token.h"
#include "drag/drag_views.h"
#include "drag/overlay.h"
#include "engine/window_engine.h"
#include "platform/run_loop.h"

#include <functional>
#include <memory>
#include <optional>

namespace tessellon {

class SnapPreviewDemo {
  public:
    using MakeViews = std::function<std::unique_ptr<DragViews>()>;

    /// The engine and the run loop must outlive it. Nothing is made before the first show.
    SnapPreviewDemo(const WindowEngine& engine, RunLoop& runLoop, MakeViews makeViews);
    SnapPreviewDemo(const SnapPreviewDemo&) = delete;
    SnapPreviewDemo& operator=(const SnapPreviewDemo&) = delete;
    /// Hides what is shown.
    ~SnapPreviewDemo();

    /// Previews the left half of the main screen, which is over by itself after a moment; while it
    /// is shown, that moment begins anew. Nothing happens without a screen.
    void show();
    void hide();

  private:
    const WindowEngine& engine_;
    RunLoop& runLoop_;
    MakeViews makeViews_;
    std::unique_ptr<DragViews> views_;
    std::optional<Overlay> overlay_;
    Token hiding_;
};

}  // namespace tessellon
