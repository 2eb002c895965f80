#include "ui/text_field.h"

#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/widget_colors.h"

#include <QKeyEvent>
#include <QPainter>

namespace tessellon {
namespace {

constexpr int fieldHeight = 34;
constexpr int usualWidth = 220;
constexpr double radius = 10;
constexpr double fontSize = 13;
constexpr int textMargin = 9;

}  // namespace

TextField::TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent)
    : QLineEdit(parent) {
    setAccessibleName(accessibleName);
    setPlaceholderText(placeholder);
    setFont(interfaceFont(fontSize));
    setFrame(false);
    setTextMargins(textMargin, 0, textMargin, 0);
    setFixedHeight(fieldHeight);
    setTextColors(*this, Qt::transparent);  // the paper below is ours
    new FocusRing(*this, radius);
}

QSize TextField::sizeHint() const {
    return {usualWidth, fieldHeight};
}

void TextField::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        painter.setOpacity(isEnabled() ? 1 : control_style::disabledOpacity);
        paintRoundedRect(painter, rect(), radius, palette::paper,
                         {palette::ink, control_style::outline});
    }
    QLineEdit::paintEvent(event);
}

void TextField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && escape_ == EscapeInField::leaves) {
        focusNextChild();
    } else if (event->key() == Qt::Key_Escape && escape_ == EscapeInField::clears &&
               !text().isEmpty()) {
        clear();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

}  // namespace tessellon
