// The part of a panel that scrolls where the screen is too low for all of it.
#pragma once

#include <QWidget>

namespace tessellon {

/// Shows the part of its content that it has room for. The wheel and the bar at its right edge move
/// the content; with all of it in view there is neither a bar nor anything else to be seen.
class PanelScroll : public QWidget {
  public:
    explicit PanelScroll(QWidget* parent);

    /// The parent of what is to be shown; as wide as this widget.
    QWidget& content() { return *content_; }
    /// In logical pixels.
    void setContentHeight(int height);

    /// Brings a control of the content into view, with some of what lies around it.
    void reveal(const QWidget& control);

    // In logical pixels.
    double offset() const { return offset_; }
    double largestOffset() const;
    void setOffset(double offset);

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void place();
    void followPointer();

    /// How much of the content is above the visible part.
    double offset_ = 0;
    QWidget* content_;
    QWidget* fades_;
    QWidget* bar_;
};

}  // namespace tessellon
