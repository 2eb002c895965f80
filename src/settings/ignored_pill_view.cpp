#include "settings/ignored_pill_view.h"

#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/return_key.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double tintOpacity = 0.22;
constexpr int sidePadding = 10;
constexpr int verticalPadding = 6;
constexpr int partSpacing = 6;
constexpr int iconSize = 18;
constexpr double nameSize = 13;
constexpr int removeSize = 18;
constexpr double crossSize = 12;
constexpr double crossStroke = 3;
constexpr int leastName = 24;

QFont nameFont() {
    return interfaceFont(nameSize, QFont::DemiBold);
}

/// Space and Return press it.
class RemoveButton : public QAbstractButton {
  public:
    RemoveButton(const QString& name, QWidget* parent) : QAbstractButton(parent) {
        setAccessibleName(name);
        setToolTip(name.toHtmlEscaped());
        setFixedSize(removeSize, removeSize);
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::ArrowCursor);
        new FocusRing(*this, removeSize / 2.0);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        if (isDown() || underMouse()) {
            paintCapsule(painter, rect(), palette::withOpacity(palette::ink, isDown() ? 0.2 : 0.1));
        }
        const QRectF cross(rect().center() + QPointF(0.5 - crossSize / 2, 0.5 - crossSize / 2),
                           QSizeF(crossSize, crossSize));
        drawSymbol(painter, Symbol::xmark, cross, palette::ink, crossStroke);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!clickByReturn(*this, *event)) {
            QAbstractButton::keyPressEvent(event);
        }
    }
};

}  // namespace

IgnoredPill::IgnoredPill(IgnoredApplication application, QWidget* parent)
    : QWidget(parent),
      application_(std::move(application)),
      name_(singleLine(application_.name)),
      nameWidth_(static_cast<int>(std::ceil(textWidth(nameFont(), name_)))),
      height_(
          std::max({iconSize, removeSize, static_cast<int>(std::ceil(lineHeight(nameFont())))}) +
          2 * verticalPadding),
      remove_(new RemoveButton(QStringLiteral("Remove ") + name_, this)) {
    setAccessibleRole(*this, QAccessible::ListItem);
    setAccessibleName(name_);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void IgnoredPill::setTint(const QColor& tint) {
    if (tint != tint_) {
        tint_ = tint;
        update();
    }
}

void IgnoredPill::findIcon() {
    icon_ = picture().find();
    waitsForIcon_ = false;
    update();
}

QSize IgnoredPill::sizeHint() const {
    return {furniture() + nameWidth_, height_};
}

QSize IgnoredPill::minimumSizeHint() const {
    return {furniture() + std::min(nameWidth_, leastName), height_};
}

void IgnoredPill::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintCapsule(painter, rect(), palette::withOpacity(tint_, tintOpacity),
                 {palette::ink, control_style::outline});
    if (application_.isInstalled) {
        const QRect square(sidePadding, (height() - iconSize) / 2, iconSize, iconSize);
        paintIcon(painter, QStyle::visualRect(layoutDirection(), rect(), square));
    }
    painter.setFont(nameFont());
    painter.setPen(palette::ink);
    drawLine(painter, QStyle::visualRect(layoutDirection(), rect(), nameRect()), fittedName_,
             Qt::AlignLeading);
}

void IgnoredPill::resizeEvent(QResizeEvent* /*event*/) {
    const QRect place(width() - sidePadding - removeSize, (height() - removeSize) / 2, removeSize,
                      removeSize);
    remove_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    const int room = nameRect().width();
    fittedName_ =
        room < nameWidth_ ? fitText(name_, room, nameSize, QFont::DemiBold, 1).text : name_;
}

bool IgnoredPill::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto position = static_cast<QHelpEvent*>(event)->globalPos();
        // What is cut off can be read in whole; a name is never markup.
        QToolTip::showText(position, fittedName_ != name_ ? name_.toHtmlEscaped() : QString(),
                           this);
        return true;
    }
    return QWidget::event(event);
}

/// All that the name shares the pill with.
int IgnoredPill::furniture() const {
    return nameLeft() + partSpacing + removeSize + sidePadding;
}

int IgnoredPill::nameLeft() const {
    return sidePadding + (application_.isInstalled ? iconSize + partSpacing : 0);
}

QRect IgnoredPill::nameRect() const {
    return {nameLeft(), 0, width() - furniture(), height()};
}

InstalledPicture IgnoredPill::picture() const {
    return {QString::fromStdString(application_.icon), iconSize, devicePixelRatio()};
}

void IgnoredPill::paintIcon(QPainter& painter, const QRect& square) {
    if (!icon_ || (!icon_->isNull() && icon_->devicePixelRatio() > devicePixelRatio())) {
        icon_ = picture().known();
    }
    if (!icon_) {
        waitsForIcon_ = true;
        if (iconWanted_) {
            iconWanted_();
        }
    } else if (icon_->isNull()) {
        drawSymbol(painter, Symbol::squareGrid2x2, square, palette::muted);
    } else {
        // As large as the picture is, which may be less than there is room for.
        QRectF frame(QPointF(), icon_->deviceIndependentSize());
        frame.moveCenter(QRectF(square).center());
        painter.drawImage(frame, *icon_);
    }
}

}  // namespace tessellon
