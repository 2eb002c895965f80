#include "onboarding/number_badge_view.h"

#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"

#include <QPainter>

namespace tessellon {
namespace {

constexpr double fontScale = 0.5;
constexpr double checkmarkScale = 0.64;
constexpr double checkmarkStroke = 3;

QColor fillOf(BadgeState state) {
    switch (state) {
        case BadgeState::current:
            return palette::amber;
        case BadgeState::next:
            return palette::paper;
        case BadgeState::done:
            break;
    }
    return palette::teal;
}

}  // namespace

NumberBadge::NumberBadge(int number, BadgeState state, int size, QWidget* parent)
    : QWidget(parent), number_(number), state_(state) {
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void NumberBadge::setState(BadgeState state) {
    state_ = state;
    update();
}

void NumberBadge::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool waits = state_ == BadgeState::next;
    paintCapsule(painter, rect(), fillOf(state_),
                 {waits ? palette::line : palette::ink, control_style::outline});
    if (state_ == BadgeState::done) {
        QRectF mark(0, 0, width() * checkmarkScale, width() * checkmarkScale);
        mark.moveCenter(QRectF(rect()).center());
        drawSymbol(painter, Symbol::checkmark, mark, palette::ink, checkmarkStroke);
        return;
    }
    painter.setFont(interfaceFont(width() * fontScale, QFont::Bold));
    painter.setPen(waits ? palette::muted : palette::ink);
    drawLine(painter, rect(), QString::number(number_));
}

}  // namespace tessellon
