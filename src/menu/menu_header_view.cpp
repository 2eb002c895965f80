#include "menu/menu_header_view.h"

#include "engine/snap_action.h"
#include "menu/menu_label_view.h"
#include "ui/glyph.h"
#include "ui/palette.h"
#include "ui/text.h"

#include <algorithm>

namespace tessellon {
namespace {

constexpr int glyphSize = 22;
constexpr int spacing = 8;
constexpr double titleSize = 17;
constexpr double lastSize = 10.5;
// Less than that tells nothing.
constexpr int lastMinimum = 40;

int centered(int height) {
    return (glyphSize - height) / 2;
}

}  // namespace

MenuHeader::MenuHeader(const std::optional<LastSnap>& last, QWidget* parent) : MenuSection(parent) {
    setContentHeight(glyphSize);
    auto* const glyph = new Glyph(glyphSize, this);
    glyph->setGeometry(QRect(origin(), QSize(glyphSize, glyphSize)));

    auto* const title =
        new MenuLabel(QStringLiteral("Tessellon"), {titleSize, QFont::Bold, palette::ink}, this);
    title->setGeometry(glyph->geometry().right() + 1 + spacing, origin().y(), title->width(),
                       glyphSize);
    state_ = new Chip(QString(), palette::teal, ChipDot::none, this);
    state_->move(title->geometry().right() + 1 + spacing, 0);
    if (last) {
        const auto action = toQString(tessellon::title(last->action));
        const auto app = singleLine(last->app);
        const auto separator = QStringLiteral(" \u00B7 ");
        last_ = new MenuLabel(action + separator + isolated(app),
                              {lastSize, QFont::Medium, palette::muted, Qt::AlignRight}, this);
        last_->setAccessibleName(action + separator + app);
        last_->setAccessibleDescription(QStringLiteral("Last snap"));
    }
    setPaused(false);
}

void MenuHeader::setPaused(bool paused) {
    state_->setText(paused ? QStringLiteral("Paused") : QStringLiteral("Snapping"));
    state_->setColor(paused ? palette::amber : palette::teal);
    const QSize size = state_->sizeHint();
    state_->setGeometry(QRect(QPoint(state_->x(), origin().y() + centered(size.height())), size));
    placeLast();
}

void MenuHeader::placeLast() {
    if (last_ == nullptr) {
        return;
    }
    const int right = origin().x() + contentWidth;
    const int room = right - (state_->geometry().right() + 1 + 2 * spacing);
    const int width = std::min(room, last_->sizeHint().width());
    last_->setGeometry(right - width, origin().y(), width, glyphSize);
    last_->setVisible(room >= lastMinimum);
}

}  // namespace tessellon
