// The tiles that snap the window in front, below their heading.
#pragma once

#include "engine/snap_action.h"
#include "menu/menu_section_view.h"
#include "menu/snap_tile_view.h"

#include <array>
#include <functional>
#include <vector>

namespace tessellon {

/// "Snap this window", and the keys that do the same with one more.
class MenuSnapHeading : public MenuSection {
  public:
    explicit MenuSnapHeading(QWidget* parent);
};

class MenuGrid : public MenuSection {
  public:
    /// What the panel offers, in order.
    static constexpr std::array<SnapAction, 16> actions{
        SnapAction::leftHalf,    SnapAction::rightHalf,   SnapAction::topHalf,
        SnapAction::bottomHalf,  SnapAction::topLeft,     SnapAction::topRight,
        SnapAction::bottomLeft,  SnapAction::bottomRight, SnapAction::leftThird,
        SnapAction::centerThird, SnapAction::rightThird,  SnapAction::leftTwoThirds,
        SnapAction::maximize,    SnapAction::center,      SnapAction::nextDisplay,
        SnapAction::restore,
    };

    /// Disabling it disables the tiles. `chosen` is called for the tile that is pressed.
    MenuGrid(const std::function<void(SnapAction)>& chosen, QWidget* parent);

    void finishAnimations();

  private:
    std::vector<SnapTile*> tiles_;
};

}  // namespace tessellon
