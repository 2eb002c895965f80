#include "menu/menu_grid_view.h"

#include "menu/menu_label_view.h"
#include "ui/key_chips.h"
#include "ui/palette.h"

#include <QRect>
#include <cmath>
#include <cstddef>
#include <utility>

namespace tessellon {
namespace {

constexpr int columns = 4;
constexpr int tileSpacing = 7;

constexpr double headingSize = 12;
constexpr double hintSize = 11;
constexpr int keySize = 20;
constexpr int hintSpacing = 5;

/// The edges of equal columns, each on a whole pixel.
QRect tileRect(int column, int row) {
    constexpr double width = (MenuSection::contentWidth - (columns - 1.0) * tileSpacing) / columns;
    const double exact = column * (width + tileSpacing);
    const int left = static_cast<int>(std::lround(exact));
    const int right = static_cast<int>(std::lround(exact + width));
    return {left, row * (SnapTile::tileHeight() + tileSpacing), right - left,
            SnapTile::tileHeight()};
}

}  // namespace

MenuSnapHeading::MenuSnapHeading(QWidget* parent) : MenuSection(parent) {
    setContentHeight(keySize);
    auto* const title = new MenuLabel(QStringLiteral("Snap this window"),
                                      {headingSize, QFont::DemiBold, palette::muted}, this);
    title->setGeometry(origin().x(), origin().y(), title->width(), keySize);

    auto* const hint =
        new MenuLabel(QStringLiteral("+ key"), {hintSize, QFont::Medium, palette::muted}, this);
    hint->setGeometry(origin().x() + contentWidth - hint->width(), origin().y(), hint->width(),
                      keySize);
    auto* const keys =
        new KeyChips({QStringLiteral("\u2303"), QStringLiteral("\u2325")}, keySize, this);
    keys->setGeometry(hint->x() - hintSpacing - keys->sizeHint().width(), origin().y(),
                      keys->sizeHint().width(), keySize);
}

MenuGrid::MenuGrid(const std::function<void(SnapAction)>& chosen, QWidget* parent)
    : MenuSection(parent) {
    Row current;
    for (std::size_t i = 0; i < actions.size(); ++i) {
        const auto action = actions[i];
        const int column = static_cast<int>(i) % columns;
        const int row = static_cast<int>(i) / columns;
        auto* const tile = new SnapTile(action, this);
        tile->setTileGeometry(tileRect(column, row).translated(origin()));
        connect(tile, &QAbstractButton::clicked, this, [chosen, action] { chosen(action); });
        tiles_.push_back(tile);
        current.push_back(tile);
        if (column == columns - 1) {
            addRow(std::exchange(current, {}));
        }
    }
    setContentHeight(tiles_.back()->tileGeometry().bottom() + 1 - origin().y());
}

void MenuGrid::finishAnimations() {
    for (auto* const tile : tiles_) {
        tile->tileStyle().finishAnimations();
    }
}

}  // namespace tessellon
