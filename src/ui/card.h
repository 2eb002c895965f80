// The rounded sheet on which the parts of a page lie.
#pragma once

#include "ui/shapes.h"

#include <QColor>
#include <QVBoxLayout>
#include <QWidget>

namespace tessellon {

struct CardStyle {
    QColor fill;
    double radius = 16;
    int horizontalPadding = 14;
    int verticalPadding = 14;
    Border border{};
};

/// The sheet for the rows of a section: set its column's spacing to the room around a Divide.
CardStyle rowsCardStyle();

/// A column of widgets on a sheet.
class Card : public QWidget {
  public:
    explicit Card(const CardStyle& style, QWidget* parent = nullptr);

    QVBoxLayout& column() { return *column_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    CardStyle style_;
    QVBoxLayout* column_;
};

}  // namespace tessellon
