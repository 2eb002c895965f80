// The switch of the program: a capsule whose knob lies at its leading or trailing end.
#pragma once

#include <QAbstractButton>
#include <QString>

namespace tessellon {

/// A checkable button of 40 × 24 logical pixels; a click anywhere on it or the space bar flips it.
/// Leave FocusRing::reach around it.
class PillToggle : public QAbstractButton {
  public:
    /// `accessibleName` says to assistive technology what is switched.
    explicit PillToggle(const QString& accessibleName, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
