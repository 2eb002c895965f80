// One action in the launcher: its picture, its name and the keys that do the same.
#pragma once

#include "engine/snap_action.h"

#include <QAbstractButton>
#include <QStringList>
#include <functional>

namespace tessellon {

/// A button: a click, or Space while it has the focus, asks for its action.
class LauncherTile : public QAbstractButton {
  public:
    static constexpr QSize tileSize{104, 96};

    /// `shortcut` is the text of the action's current shortcut; "" when it has none.
    LauncherTile(SnapAction action, const QString& shortcut, QWidget* parent);

    SnapAction action() const { return action_; }

    bool isSelected() const { return selected_; }
    void setSelected(bool selected);

    /// Called when the pointer moves over the tile, with its place on the screen.
    std::function<void(QPoint)> onPointerMoved;
    /// Called when the tile gets the focus.
    std::function<void()> onFocused;

    QSize sizeHint() const override { return tileSize; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void paintKeys(QPainter& painter, double top) const;

    SnapAction action_;
    QString label_;
    QStringList keys_;
    bool selected_ = false;
};

}  // namespace tessellon
