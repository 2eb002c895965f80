#include "menu/menu_button_view.h"

#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QFont>
#include <cmath>

namespace tessellon {
namespace {

constexpr double textSize = 11.5;
constexpr double hintSize = 10.5;
constexpr double hintSpacing = 4;
// Round a symbol its own margins add to the space.
constexpr double symbolSpacing = 2;
constexpr double symbolStrokeWidth = 3;
constexpr double textButtonRadius = 8;
constexpr int textButtonHeight = 22;

constexpr double capsuleTextSize = 11;
constexpr int capsuleSidePadding = 9;
constexpr int capsuleVerticalPadding = 4;
constexpr int darker = 108;  // percent

QFont titleFont() {
    return interfaceFont(textSize, QFont::DemiBold);
}

QFont capsuleFont() {
    return interfaceFont(capsuleTextSize, QFont::DemiBold);
}

int capsuleHeight() {
    return static_cast<int>(std::ceil(lineHeight(capsuleFont()))) + 2 * capsuleVerticalPadding;
}

}  // namespace

MenuButton::MenuButton(const QString& accessibleName, double radius, QWidget* parent)
    : QAbstractButton(parent), radius_(radius) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(accessibleName);
    new FocusRing(*this, radius);
}

void MenuButton::paintGround(QPainter& painter) const {
    if (isLit()) {
        paintRoundedRect(painter, QRectF(rect()), radius_,
                         palette::withOpacity(palette::line, isDown() ? 1 : 0.6));
    }
}

MenuTextButton::MenuTextButton(const QString& title, QWidget* parent)
    : MenuButton(title, textButtonRadius, parent), title_(title) {
    resize(MenuTextButton::sizeHint());
}

void MenuTextButton::setSymbol(Symbol symbol) {
    symbol_ = symbol;
    resize(sizeHint());
}

void MenuTextButton::setKeyHint(const QString& keys) {
    hint_ = keys;
    setAccessibleDescription(spokenKeys(onePerCharacter(keys)));
    resize(sizeHint());
}

double MenuTextButton::symbolRoom() const {
    return symbol_ ? textSize + symbolSpacing : 0;
}

double MenuTextButton::titleWidth() const {
    return textWidth(titleFont(), title_);
}

QSize MenuTextButton::sizeHint() const {
    const double hintRoom =
        hint_.isEmpty() ? 0 : hintSpacing + textWidth(interfaceFont(hintSize), hint_);
    const double content = symbolRoom() + titleWidth() + hintRoom;
    return {static_cast<int>(std::ceil(content)) + 2 * overhang, textButtonHeight};
}

void MenuTextButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintGround(painter);
    QRectF line = QRectF(rect()).adjusted(overhang, 0, -overhang, 0);
    if (symbol_) {
        drawSymbol(painter, *symbol_,
                   QRectF(line.left(), line.center().y() - textSize / 2, textSize, textSize),
                   palette::ink, symbolStrokeWidth);
        line.setLeft(line.left() + symbolRoom());
    }
    painter.setPen(palette::ink);
    painter.setFont(titleFont());
    drawLine(painter, line, title_, Qt::AlignLeft);
    painter.setPen(palette::muted);
    painter.setFont(interfaceFont(hintSize));
    drawLine(painter, line.adjusted(titleWidth() + hintSpacing, 0, 0, 0), hint_, Qt::AlignLeft);
}

MenuCapsuleButton::MenuCapsuleButton(const QString& title, QWidget* parent)
    : MenuButton(title, capsuleHeight() / 2.0, parent), title_(title) {
    resize(MenuCapsuleButton::sizeHint());
}

QSize MenuCapsuleButton::sizeHint() const {
    return {static_cast<int>(std::ceil(textWidth(capsuleFont(), title_))) + 2 * capsuleSidePadding,
            capsuleHeight()};
}

void MenuCapsuleButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QColor fill = palette::teal;
    if (isLit()) {
        fill = isDown() ? fill.darker(darker) : fill.lighter(darker);
    }
    paintCapsule(painter, QRectF(rect()), fill, {palette::ink, control_style::thinOutline});
    painter.setPen(palette::ink);
    painter.setFont(capsuleFont());
    drawLine(painter, QRectF(rect()), title_);
}

}  // namespace tessellon
