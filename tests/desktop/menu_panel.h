// The panel of the status item as it lies on the screen: where its controls are.
#pragma once

#include "harness/frame.h"
#include "harness/pointer.h"

namespace tessellon::desktop {

/// In the order of the grid.
enum class MenuTile {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    leftThird,
    centerThird,
    rightThird,
    leftTwoThirds,
    maximize,
    center,
    nextDisplay,
    restore
};

enum class MenuSwitch { tiling, ignore, pause };

/// Places are the middles of controls, in pixels of the screen. It is the panel for a program whose
/// name is short, so that every switch but the last has one line below its title.
class MenuPanel {
  public:
    static constexpr int width = 330;

    explicit MenuPanel(const Frame& frame) : frame_(frame) {}

    const Frame& frame() const { return frame_; }
    int right() const { return frame_.x + frame_.width; }
    int bottom() const { return frame_.y + frame_.height; }

    Position tile(MenuTile tile) const {
        constexpr int columns = 4;
        const int column = static_cast<int>(tile) % columns;
        const int row = static_cast<int>(tile) / columns;
        return fromTop(padding + (2 * column + 1) * contentWidth / (2 * columns),
                       gridTop + row * (tileHeight + tileSpacing) + tileHeight / 2);
    }

    Position saveCurrent() const {
        return fromTop(width - padding - 30, saveTop + buttonHeight / 2);
    }
    /// The rows of arrangements are counted from 0.
    Position arrangement(int row) const {
        const int top = saveTop + buttonHeight + row * (arrangementHeight + arrangementSpacing) +
                        arrangementSpacing;
        return fromTop(width / 2, top + arrangementHeight / 2);
    }

    Position switchOf(MenuSwitch which) const {
        constexpr int toggle = padding + 20;
        return fromBottom(width - toggle, switchesBottom - middleOfSwitch(which));
    }
    /// There while tiling is on.
    Position tileNow() const {
        return fromBottom(width - padding - 85,
                          switchesBottom - middleOfSwitch(MenuSwitch::tiling));
    }

    Position settings() const { return fromBottom(padding + 20, footerMiddle); }
    Position updates() const { return fromBottom(width / 2, footerMiddle); }
    Position quit() const { return fromBottom(width - padding - 20, footerMiddle); }

  private:
    static constexpr int padding = 12;
    static constexpr int spacing = 10;
    static constexpr int contentWidth = width - 2 * padding;

    // From the top: the header, the heading of the grid, the grid, the arrangements.
    static constexpr int headerHeight = 22;
    static constexpr int headingHeight = 20;
    static constexpr int gridTop = padding + headerHeight + spacing + headingHeight + spacing;
    static constexpr int tileHeight = 53;
    static constexpr int tileSpacing = 7;
    static constexpr int saveTop = gridTop + 4 * tileHeight + 3 * tileSpacing + spacing;
    static constexpr int buttonHeight = 22;
    static constexpr int arrangementHeight = 27;
    static constexpr int arrangementSpacing = 6;

    // From the bottom: the footer, the rule, the switches.
    static constexpr int footerMiddle = -(padding + buttonHeight / 2);
    static constexpr int ruleHeight = 2;
    static constexpr int switchesBottom =
        -(padding + buttonHeight + spacing + ruleHeight + spacing);

    static constexpr int middleOfSwitch(MenuSwitch which) {
        constexpr int tilingHeight = 48;
        constexpr int height = 40;
        constexpr int rowSpacing = 2;
        if (which == MenuSwitch::tiling) {
            return tilingHeight / 2;
        }
        const int above = which == MenuSwitch::pause ? height + rowSpacing : 0;
        return tilingHeight + rowSpacing + above + height / 2;
    }

    Position fromTop(int x, int y) const { return {frame_.x + x, frame_.y + y}; }
    Position fromBottom(int x, int y) const { return {frame_.x + x, bottom() + y}; }

    Frame frame_;
};

}  // namespace tessellon::desktop
