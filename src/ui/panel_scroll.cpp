#include "ui/panel_scroll.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <QApplication>
#include <QCursor>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

// What is cut off fades away, so that nobody takes the cut for the end.
constexpr int fadeHeight = 12;

// The bar lies beyond the rings of the controls that reach to the edge of the column.
constexpr int barWidth = 8;
constexpr double thumbWidth = 3;
constexpr double thumbRight = 2;
constexpr double barEnd = 4;
constexpr double shortestThumb = 24;
constexpr double restingOpacity = 0.4;
constexpr double heldOpacity = 0.8;

// Enough for the heading above the first tiles, or for a part of the next control.
constexpr int revealMargin = 40;

constexpr double lineHeight = 20;
constexpr double notch = 120;  // of a wheel, in Qt's eighths of a degree

class Fades : public QWidget {
  public:
    explicit Fades(PanelScroll& scroll) : QWidget(&scroll), scroll_(scroll) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        if (scroll_.offset() > 0) {
            paintFade(painter, 0, fadeHeight);
        }
        if (scroll_.offset() < scroll_.largestOffset()) {
            paintFade(painter, height(), height() - fadeHeight);
        }
    }

  private:
    /// From the edge, where nothing shows through, inward.
    void paintFade(QPainter& painter, int edge, int end) const {
        QLinearGradient gradient(0, edge, 0, end);
        gradient.setColorAt(0, palette::paper);
        gradient.setColorAt(1, palette::withOpacity(palette::paper, 0));
        painter.fillRect(0, std::min(edge, end), width(), fadeHeight, gradient);
    }

    PanelScroll& scroll_;
};

/// Shows which part is visible. For the mouse alone: by keyboard the part follows the focus.
class Bar : public QWidget {
  public:
    explicit Bar(PanelScroll& scroll) : QWidget(&scroll), scroll_(scroll) {
        setAttribute(Qt::WA_Hover);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const double opacity = held_ || underMouse() ? heldOpacity : restingOpacity;
        paintCapsule(painter, thumb(), palette::withOpacity(palette::muted, opacity));
    }
    void mousePressEvent(QMouseEvent* event) override {
        const double y = event->position().y();
        const QRectF shown = thumb();
        // Beside the thumb a press brings its middle there.
        grip_ = y >= shown.top() && y < shown.bottom() ? y - shown.top() : shown.height() / 2;
        held_ = true;
        drag(y);
        update();
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (held_) {
            drag(event->position().y());
        }
    }
    void mouseReleaseEvent(QMouseEvent* /*event*/) override {
        held_ = false;
        update();
    }

  private:
    double track() const { return height() - 2 * barEnd; }
    QRectF thumb() const {
        const double all = scroll_.height() + scroll_.largestOffset();
        const double length = std::max(shortestThumb, track() * scroll_.height() / all);
        const double share = scroll_.offset() / scroll_.largestOffset();
        return {width() - thumbRight - thumbWidth, barEnd + (track() - length) * share, thumbWidth,
                length};
    }
    void drag(double y) {
        const double way = track() - thumb().height();
        scroll_.setOffset(scroll_.largestOffset() * (y - grip_ - barEnd) / way);
    }

    PanelScroll& scroll_;
    bool held_ = false;
    /// How far below the thumb's top it is held.
    double grip_ = 0;
};

}  // namespace

PanelScroll::PanelScroll(QWidget* parent)
    : QWidget(parent), content_(new QWidget(this)), fades_(new Fades(*this)), bar_(new Bar(*this)) {
    place();
}

void PanelScroll::setContentHeight(int height) {
    content_->resize(width(), height);
    place();
}

double PanelScroll::largestOffset() const {
    return std::max(0, content_->height() - height());
}

void PanelScroll::setOffset(double offset) {
    const double bounded = std::clamp(offset, 0.0, largestOffset());
    if (bounded != offset_) {
        offset_ = bounded;
        place();
        followPointer();
    }
}

void PanelScroll::reveal(const QWidget& control) {
    const QRect rect(control.mapTo(content_, QPoint(0, 0)), control.size());
    const int margin = std::clamp((height() - rect.height()) / 2, 0, revealMargin);
    const double below = rect.bottom() + 1 + margin - height();
    const double above = rect.top() - margin;
    setOffset(std::min(std::max(offset_, below), above));
}

void PanelScroll::wheelEvent(QWheelEvent* event) {
    // A fine wheel tells of small parts of a notch.
    const double notches = event->angleDelta().y() / notch;
    setOffset(offset_ - notches * QApplication::wheelScrollLines() * lineHeight);
    event->accept();
}

void PanelScroll::resizeEvent(QResizeEvent* /*event*/) {
    content_->resize(width(), content_->height());
    place();
}

void PanelScroll::place() {
    offset_ = std::clamp(offset_, 0.0, largestOffset());
    content_->move(0, -static_cast<int>(std::lround(offset_)));
    const bool scrolls = largestOffset() > 0;
    fades_->setGeometry(rect());
    fades_->setVisible(scrolls);
    fades_->update();
    bar_->setGeometry(width() - barWidth, 0, barWidth, height());
    bar_->setVisible(scrolls);
    bar_->update();
}

/// The pointer rests while the content moves: the control that comes to lie below it learns of it.
void PanelScroll::followPointer() {
    auto* const handle = window()->windowHandle();
    if (handle == nullptr || !underMouse() || QApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    const QPointF position = QCursor::pos();
    QMouseEvent moved(QEvent::MouseMove, handle->mapFromGlobal(position), position, Qt::NoButton,
                      Qt::NoButton, QApplication::keyboardModifiers());
    QApplication::sendEvent(handle, &moved);
}

}  // namespace tessellon
