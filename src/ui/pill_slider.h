// The slider of the program: a capsule track, filled up to a round knob.
#pragma once

#include "base/signal.h"

#include <QColor>
#include <QPainter>
#include <QString>
#include <QWidget>

namespace tessellon {

class PillSlider : public QWidget {
  public:
    /// What the ends of the track stand for.
    struct Range {
        double lower = 0;
        double upper = 1;
    };

    /// Values that the user chooses are multiples of `step`; with a step of 0 any value is one.
    /// `accessibleName` says to assistive technology what is set. Leave FocusRing::reach around it.
    PillSlider(const QString& accessibleName, Range range, double step, const QColor& color,
               QWidget* parent = nullptr);

    double value() const { return value_; }
    Range range() const { return range_; }
    double step() const { return step_; }

    /// Shows another value, as it is, without a word to the subscribers. A value outside the range
    /// shows at the nearer end.
    void setValue(double value);

    /// Goes to the multiple of the step that is nearest to `value` or to the nearer end of the
    /// range, as if the user had done it.
    void choose(double value);

    /// Emitted with the new value when the user has changed it.
    const Signal<double>& valueChanged() const { return valueChanged_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    double fraction() const;
    double usableWidth() const;
    void dragTo(double x);
    void draw(QPainter& painter) const;

    Range range_;
    double step_;
    QColor color_;
    double value_;
    bool dragging_ = false;
    Signal<double> valueChanged_;
};

}  // namespace tessellon
