// The plain buttons of the panel: text that darkens its ground below the pointer.
#pragma once

#include "ui/symbols.h"

#include <QAbstractButton>
#include <QPainter>
#include <QString>
#include <optional>

namespace tessellon {

/// A button that knows the pointer and shows the ring of the keyboard, which alone gives it the
/// focus.
class MenuButton : public QAbstractButton {
  public:
    /// `radius` is that of its corners, in logical pixels.
    MenuButton(const QString& accessibleName, double radius, QWidget* parent);

  protected:
    double radius() const { return radius_; }
    /// Below the pointer, or pressed.
    bool isLit() const { return isEnabled() && (underMouse() || isDown()); }
    /// Fills the button's shape while it is lit.
    void paintGround(QPainter& painter) const;

  private:
    double radius_;
};

/// A title, with a symbol before it or the keys that do the same after it.
class MenuTextButton : public MenuButton {
  public:
    /// Has the size of its content and `overhang` on each side.
    MenuTextButton(const QString& title, QWidget* parent);

    void setSymbol(Symbol symbol);
    /// The keys in signs, such as "⌘Q".
    void setKeyHint(const QString& keys);

    /// How far the button reaches beyond its content on the left and on the right.
    static constexpr int overhang = 4;

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double symbolRoom() const;
    double titleWidth() const;

    QString title_;
    std::optional<Symbol> symbol_;
    QString hint_;
};

/// A filled capsule.
class MenuCapsuleButton : public MenuButton {
  public:
    /// Has the size of its text and padding.
    MenuCapsuleButton(const QString& title, QWidget* parent);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString title_;
};

}  // namespace tessellon
