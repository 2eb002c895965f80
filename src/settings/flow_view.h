// A layout like that of words in a paragraph.
#pragma once

#include <QLayout>
#include <QList>
#include <functional>

namespace tessellon {

/// Places its items at their own sizes from the leading edge on; one that would pass the available
/// width starts a new line. Each line is as high as its tallest item.
class Flow : public QLayout {
  public:
    /// `spacing` logical pixels between items and between lines.
    explicit Flow(int spacing, QWidget* parent = nullptr);
    ~Flow() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

  private:
    using Place = std::function<void(QLayoutItem&, const QRect&)>;
    /// Calls `place` with every item that is not hidden and its frame, from the corner on.
    void forEachPlaced(int width, const Place& place) const;
    /// The right and the bottom edge of the last item.
    QSize sizeFor(int width) const;

    QList<QLayoutItem*> items_;
};

}  // namespace tessellon
