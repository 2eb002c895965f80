// A setting that is a number within a range.
#pragma once

#include "base/signal.h"
#include "ui/pill_slider.h"

#include <QColor>
#include <QString>
#include <QWidget>

namespace tessellon {

class TextLabel;

/// What a row with a slider says and allows.
struct SliderRowSpec {
    QString title{};
    /// Empty: none.
    QString subtitle{};
    PillSlider::Range range{};
    double step = 1;
    /// Behind the value, which is shown whole; empty: the number alone.
    QString unit{};
    QColor color{};
};

class SliderRow : public QWidget {
  public:
    SliderRow(const SliderRowSpec& spec, double value, QWidget* parent = nullptr);

    /// Shows another value, without a word to the subscribers.
    void setValue(double value);
    PillSlider& slider() { return *slider_; }

    /// Emitted with the new value when the user has changed it.
    const Signal<double>& valueChanged() const { return slider_->valueChanged(); }

  private:
    void showNumber();

    QString unit_;
    PillSlider* slider_ = nullptr;
    TextLabel* number_ = nullptr;
    Token changed_;
};

}  // namespace tessellon
