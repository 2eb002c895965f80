// One part of the panel's column.
#pragma once

#include <QAbstractButton>
#include <QPoint>
#include <QWidget>
#include <utility>
#include <vector>

namespace tessellon {

class MenuSection : public QWidget {
  public:
    /// The width of the panel's column in logical pixels.
    static constexpr int contentWidth = 306;

    /// What lies side by side for the arrow keys.
    using Row = std::vector<QAbstractButton*>;

    explicit MenuSection(QWidget* parent) : QWidget(parent) {}

    int contentHeight() const { return contentHeight_; }
    /// Puts the top left corner of the content there, in the parent's coordinates.
    void moveContent(const QPoint& topLeft) { move(topLeft - origin()); }

    /// The controls from top to bottom.
    const std::vector<Row>& rows() const { return rows_; }

    // The widget is larger than its content, so that the rings around controls at its edge are
    // whole.
    static constexpr int sideOverhang = 10;
    static constexpr int verticalOverhang = 4;

  protected:
    /// The top left corner of the content.
    static QPoint origin() { return {sideOverhang, verticalOverhang}; }

    void setContentHeight(int height) {
        contentHeight_ = height;
        resize(contentWidth + 2 * sideOverhang, height + 2 * verticalOverhang);
    }
    void addRow(Row row) { rows_.push_back(std::move(row)); }

  private:
    int contentHeight_ = 0;
    std::vector<Row> rows_;
};

}  // namespace tessellon
