#include "ui/focus_ring.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>

namespace tessellon {
namespace {

constexpr double ringWidth = 2;
// Between the ring and its control, measured from the ring's outer edge.
constexpr double gapEnd = FocusRing::reach - 1;

class Frame : public QWidget {
  public:
    Frame(QWidget* parent, double radius) : QWidget(parent), radius_(radius) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        strokeBorder(painter, rect(), radius_ + FocusRing::reach, {palette::ink, ringWidth});
    }

  private:
    double radius_;
};

}  // namespace

FocusRing::FocusRing(QWidget& control, double radius)
    : QObject(&control), control_(control), radius_(radius) {
    control.installEventFilter(this);
}

FocusRing::~FocusRing() {
    delete frame_;
}

bool FocusRing::eventFilter(QObject* /*watched*/, QEvent* event) {
    switch (event->type()) {
        case QEvent::FocusIn: {
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            // A window that becomes active again gives the focus back as it was.
            if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
                byKeyboard_ = reason != Qt::MouseFocusReason;
            }
            setShown(byKeyboard_);
            break;
        }
        case QEvent::KeyPress:
            byKeyboard_ = true;
            setShown(control_.hasFocus());
            break;
        case QEvent::FocusOut:
        case QEvent::Hide:
            setShown(false);
            break;
        case QEvent::Show:
            setShown(byKeyboard_ && control_.hasFocus());
            break;
        case QEvent::ParentChange:
            if (frame_) {
                frame_->setParent(control_.parentWidget());
            }
            setShown(byKeyboard_ && control_.hasFocus());
            break;
        case QEvent::Move:
        case QEvent::Resize:
            place();
            break;
        default:
            break;
    }
    return false;
}

void FocusRing::place() {
    if (frame_) {
        frame_->setGeometry(control_.geometry().adjusted(-reach, -reach, reach, reach));
        // A style sheet of the page may give every widget a background; none may hide the control.
        const QRectF within = QRectF(frame_->rect()).adjusted(gapEnd, gapEnd, -gapEnd, -gapEnd);
        const QPainterPath hole = continuousRoundedRect(within, radius_ + reach - gapEnd);
        frame_->setMask(QRegion(frame_->rect()) - QRegion(hole.toFillPolygon().toPolygon()));
    }
}

void FocusRing::setShown(bool shown) {
    if (!shown) {
        if (frame_) {
            frame_->hide();
        }
        return;
    }
    if (control_.isWindow()) {
        return;
    }
    if (!frame_) {
        frame_ = new Frame(control_.parentWidget(), radius_);
    }
    place();
    frame_->raise();
    frame_->show();
}

}  // namespace tessellon
