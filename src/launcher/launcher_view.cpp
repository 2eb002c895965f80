#include "launcher/launcher_view.h"

#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"
#include "ui/widget_colors.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int panelWidth = 472;
constexpr int padding = 16;
constexpr int spacing = 12;

constexpr int rowSidePadding = 12;
constexpr int rowVerticalPadding = 10;
constexpr int rowSpacing = 10;
constexpr double rowRadius = 12;
constexpr double rowBorder = 1.5;
constexpr int symbolSize = 18;
constexpr double fieldFontSize = 16;
// Leaves more than half of the row to the search text, however long an application's name is.
constexpr double chipMaxWidth = 160;
constexpr double chipFontSize = 11;

constexpr int columns = 4;
constexpr int tileSpacing = 8;
// How far what scrolls reaches beyond the tiles on either side: the bar lies there.
constexpr int scrollOverhang = 12;
constexpr int messageHeight = 80;
constexpr double messageFontSize = 14;

constexpr int contentWidth = panelWidth - 2 * padding;
// A row of tiles, and no less on any screen.
constexpr int leastScrolledHeight = LauncherTile::tileSize.height();
static_assert(columns * LauncherTile::tileSize.width() + (columns - 1) * tileSpacing ==
              contentWidth);

int rowContentHeight() {
    const double line = lineHeight(interfaceFont(fieldFontSize));
    return static_cast<int>(std::ceil(std::max(line, chipSize(QString()).height())));
}

QRect rowRect() {
    return {padding, padding, contentWidth, rowContentHeight() + 2 * rowVerticalPadding};
}

int gridTop() {
    return padding + rowRect().height() + spacing;
}

int gridHeight(std::size_t tiles) {
    const int rows = (static_cast<int>(tiles) + columns - 1) / columns;
    return std::max(0, rows * (LauncherTile::tileSize.height() + tileSpacing) - tileSpacing);
}

/// In the grid, which keeps clear of the bar beside it.
QPoint tilePosition(int index) {
    return {scrollOverhang + index % columns * (LauncherTile::tileSize.width() + tileSpacing),
            index / columns * (LauncherTile::tileSize.height() + tileSpacing)};
}

/// The application's name as a chip of limited width.
QString chipText(const QString& name) {
    const double decoration = chipSize(QString()).width();
    return fitText(name, chipMaxWidth - decoration, chipFontSize, QFont::DemiBold, 1).text;
}

}  // namespace

LauncherView::LauncherView(LauncherModel& model, const KeyBindings& bindings,
                           Compositing& compositing, const Rect& area)
    : CardPanel(PanelLevel::modal, compositing),
      model_(&model),
      changed_(model.changed().subscribe([this] { refresh(); })) {
    makeSearchRow();
    makeTiles(bindings);
    setAccessibleName(QStringLiteral("Launcher"));
    const int room = greatestHeight(area) - gridTop() - padding;
    const int scrolledHeight = std::clamp(room, leastScrolledHeight, gridHeight(tiles_.size()));
    scroll_->setGeometry(padding - scrollOverhang, gridTop(), contentWidth + 2 * scrollOverhang,
                         scrolledHeight);
    height_ = gridTop() + scrolledHeight + padding;
    refresh();
    searchField_->setFocus();
    // Also where there is no tile the pointer is told of.
    for (auto* const ground :
         {static_cast<QWidget*>(this), static_cast<QWidget*>(scroll_), &scroll_->content()}) {
        ground->setMouseTracking(true);
    }
    setSizeOnScreen(LauncherView::sizeHint(), area);
}

void LauncherView::detach() {
    changed_.reset();
    model_ = nullptr;
}

QSize LauncherView::sizeHint() const {
    return {panelWidth, height_};
}

void LauncherView::makeSearchRow() {
    const auto name = singleLine(model_->appName());
    const QRect content = rowRect().adjusted(rowSidePadding, rowVerticalPadding, -rowSidePadding,
                                             -rowVerticalPadding);
    auto* const chip = new Chip(chipText(name), palette::teal, ChipDot::none, this);
    const auto chipRoom = chip->sizeHint();
    chip->setGeometry(content.right() + 1 - chipRoom.width(),
                      content.top() + (content.height() - chipRoom.height()) / 2, chipRoom.width(),
                      chipRoom.height());

    searchField_ = new QLineEdit(this);
    const int fieldLeft = content.left() + symbolSize + rowSpacing;
    searchField_->setGeometry(fieldLeft, content.top(),
                              chip->geometry().left() - rowSpacing - fieldLeft, content.height());
    searchField_->setFrame(false);
    searchField_->setTextMargins(-2, 0, 0, 0);  // takes back what the field adds by itself
    searchField_->setFont(interfaceFont(fieldFontSize));
    searchField_->setContextMenuPolicy(Qt::NoContextMenu);
    searchField_->setAcceptDrops(false);
    setTextColors(*searchField_, Qt::transparent);
    const auto placeholder = QStringLiteral("Snap ") + name + QChar(0x2026);
    // A hair space keeps the caret off the first letter.
    searchField_->setPlaceholderText(QChar(0x200A) + placeholder);
    searchField_->setAccessibleName(placeholder);
    connect(searchField_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (model_ != nullptr) {
            model_->setQuery(text.toStdString());
        }
    });
}

void LauncherView::makeTiles(const KeyBindings& bindings) {
    scroll_ = new PanelScroll(this);
    for (const auto action : allSnapActions) {
        auto* const tile = new LauncherTile(
            action, QString::fromStdString(bindings.shortcutText(action)), &scroll_->content());
        connect(tile, &QAbstractButton::clicked, this, [this, action] {
            // Running an action closes the launcher, which takes the model along.
            if (const auto run = model_ != nullptr ? model_->run : nullptr) {
                run(action);
            }
        });
        tile->onPointerMoved = [this, tile](QPoint position) { pointerMoved(*tile, position); };
        tile->onFocused = [this, tile] {
            select(*tile);
            scroll_->reveal(*tile);
        };
        tiles_.push_back(tile);
    }
}

void LauncherView::refresh() {
    const auto query = QString::fromStdString(model_->query());
    if (searchField_->text() != query) {
        const QSignalBlocker blocker(searchField_);
        searchField_->setText(query);
    }
    placeTiles();
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const bool isSelected = static_cast<int>(i) == model_->selection();
        shown_[i]->setSelected(isSelected);
        // What the pointer is on stays below it.
        if (isSelected && !isPointing_) {
            scroll_->reveal(*shown_[i]);
        }
        // Space presses the tile with the focus, Return runs the selected one: they stay the same.
        if (isSelected && dynamic_cast<LauncherTile*>(focusWidget()) != nullptr) {
            shown_[i]->setFocus();
        }
    }
}

void LauncherView::placeTiles() {
    std::vector<LauncherTile*> wanted;
    for (const auto action : model_->matches()) {
        wanted.push_back(tiles_[static_cast<std::size_t>(action)]);
    }
    if (wanted == shown_) {
        return;
    }
    if (wanted.empty() || shown_.empty()) {
        update();  // the message comes or goes
    }
    shown_ = std::move(wanted);
    hovered_ = nullptr;
    for (auto* const tile : tiles_) {
        const auto place = std::ranges::find(shown_, tile);
        const bool isShown = place != shown_.end();
        if (isShown) {
            tile->move(tilePosition(static_cast<int>(place - shown_.begin())));
        } else if (tile->hasFocus()) {
            searchField_->setFocus();
        }
        tile->setVisible(isShown);
    }
    scroll_->setContentHeight(gridHeight(shown_.size()));
}

void LauncherView::pointerMoved(const LauncherTile& tile, QPoint position) {
    // Tiles that come to lie below a pointer at rest are told of it too; only a hand on the pointer
    // may take the selection away from the keyboard.
    if (position == pointer_) {
        return;
    }
    pointer_ = position;
    if (hovered_ != &tile) {
        hovered_ = &tile;
        const QScopedValueRollback pointing(isPointing_, true);
        select(tile);
    }
}

void LauncherView::select(const LauncherTile& tile) {
    const auto place = std::ranges::find(shown_, &tile);
    if (model_ != nullptr && place != shown_.end()) {
        model_->setSelection(static_cast<int>(place - shown_.begin()));
    }
}

void LauncherView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintCard(painter);

    const QRectF row(rowRect());
    paintRoundedRect(painter, row, rowRadius, palette::cream, {palette::ink, rowBorder});
    drawSymbol(painter, Symbol::magnifyingGlass,
               QRectF(row.left() + rowSidePadding, row.center().y() - symbolSize / 2.0, symbolSize,
                      symbolSize),
               palette::muted);
    if (shown_.empty()) {
        painter.setFont(interfaceFont(messageFontSize, QFont::Normal));
        painter.setPen(palette::muted);
        drawLine(painter, QRectF(padding, gridTop(), contentWidth, messageHeight),
                 QStringLiteral("No matches"));
    }
}

void LauncherView::showEvent(QShowEvent* event) {
    pointer_ = QCursor::pos();
    CardPanel::showEvent(event);
}

void LauncherView::keyPressEvent(QKeyEvent* event) {
    // What a tile with the focus has no use for is meant for the search.
    const bool typesText = !event->text().isEmpty() && event->text().front().isPrint();
    if (typesText && !searchField_->hasFocus()) {
        searchField_->setFocus();
        searchField_->end(false);
        searchField_->insert(event->text());
        return;
    }
    CardPanel::keyPressEvent(event);
}

void LauncherView::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->globalPosition().toPoint();
    hovered_ = nullptr;
}

void LauncherView::leaveEvent(QEvent* /*event*/) {
    hovered_ = nullptr;
}

}  // namespace tessellon
