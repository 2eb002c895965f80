// The launcher as the user sees it: the search row and, below it, a tile for each action that
// matches.
#pragma once

#include "base/token.h"
#include "launcher/launcher_model.h"
#include "launcher/launcher_tile_view.h"
#include "shortcuts/key_bindings.h"
#include "ui/card_panel.h"
#include "ui/panel_scroll.h"

#include <QLineEdit>
#include <QPoint>
#include <vector>

namespace tessellon {

class LauncherView : public CardPanel {
  public:
    /// The model has to be there until detach() or the end of the view, the bindings only now. The
    /// view's frame is as large as all tiles need, but no higher than `area` (screen coordinates)
    /// unless that is empty: else the tiles scroll below the search row. It keeps that size.
    LauncherView(LauncherModel& model, const KeyBindings& bindings, Compositing& compositing,
                 const Rect& area);

    /// Lets go of the model: from now on nothing that happens to the view has an effect.
    void detach();

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void makeSearchRow();
    void makeTiles(const KeyBindings& bindings);
    /// Brings text, tiles and selection into line with the model.
    void refresh();
    void placeTiles();
    void pointerMoved(const LauncherTile& tile, QPoint position);
    void select(const LauncherTile& tile);

    /// Null once the view is detached.
    LauncherModel* model_;
    Token changed_;
    QLineEdit* searchField_ = nullptr;
    /// What the tiles lie in.
    PanelScroll* scroll_ = nullptr;
    int height_ = 0;
    /// One for each action, in order.
    std::vector<LauncherTile*> tiles_;
    /// Those that are shown, in the order of the matches.
    std::vector<LauncherTile*> shown_;
    /// Where the pointer was last seen, and the tile that it has selected.
    QPoint pointer_;
    const LauncherTile* hovered_ = nullptr;
    /// The pointer is what changes the selection just now.
    bool isPointing_ = false;
};

}  // namespace tessellon
