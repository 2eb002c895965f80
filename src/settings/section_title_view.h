// The heading of a section of a page.
#pragma once

#include <QColor>
#include <QHBoxLayout>
#include <QString>
#include <QWidget>

namespace tessellon {

class Chip;
class Dot;

class SectionTitle : public QWidget {
  public:
    explicit SectionTitle(const QString& title, QWidget* parent = nullptr);

    /// Shows a chip behind the title, or another text in the one that is there.
    void setChip(const QString& text, const QColor& color);
    /// Shows a dot behind the title, or another color in the one that is there.
    void setDot(const QColor& color);

  private:
    QHBoxLayout* line_;
    Chip* chip_ = nullptr;
    Dot* dot_ = nullptr;
};

}  // namespace tessellon
