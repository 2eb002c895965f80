// Panels of the drag feature that only remember what they were told.
#pragma once

#include "drag/drag_views.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tessellon {

template <typename Interface>
class FakePanel : public Interface {
  public:
    explicit FakePanel(std::vector<FakePanel*>& alive) : alive_(alive) { alive_.push_back(this); }
    ~FakePanel() override { std::erase(alive_, this); }
    FakePanel(const FakePanel&) = delete;
    FakePanel& operator=(const FakePanel&) = delete;

    Rect frame() const override { return frame_; }
    void setFrame(const Rect& frame) override {
        frame_ = frame;
        ++framesSet;
    }
    bool isVisible() const override { return visible_; }
    void orderFrontRegardless() override {
        visible_ = true;
        ++shows;
    }
    void orderOut() override { visible_ = false; }

    int framesSet = 0;
    int shows = 0;

  private:
    std::vector<FakePanel*>& alive_;
    Rect frame_;
    bool visible_ = false;
};

/// Both kinds at once; each is used for what it is asked.
struct FakeHintsInterface : HintsPanel {
    void setHints(std::vector<Hint> newHints) override {
        hints = std::move(newHints);
        active.reset();
    }
    void setActive(std::optional<SnapAction> action) override {
        active = action;
        ++activations;
    }
    std::vector<Hint> hints;
    std::optional<SnapAction> active;
    int activations = 0;
};

struct FakeOverlayInterface : OverlayPanel {
    void setAction(SnapAction newAction) override { action = newAction; }
    std::optional<SnapAction> action;
};

class FakeDragViews final : public DragViews {
  public:
    using Grid = FakePanel<FakeHintsInterface>;
    using Preview = FakePanel<FakeOverlayInterface>;

    std::unique_ptr<HintsPanel> makeHintsPanel() override {
        ++gridsMade;
        return std::make_unique<Grid>(grids);
    }
    std::unique_ptr<OverlayPanel> makeOverlayPanel() override {
        return std::make_unique<Preview>(previews);
    }

    bool isGridShown() const {
        return std::any_of(grids.begin(), grids.end(),
                           [](const Grid* grid) { return grid->isVisible(); });
    }
    bool isPreviewShown() const { return !previews.empty() && previews[0]->isVisible(); }

    /// The panels that exist, in the order they were made.
    std::vector<Grid*> grids;
    std::vector<Preview*> previews;
    int gridsMade = 0;
};

}  // namespace tessellon
