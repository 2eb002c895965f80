#include "launcher/launcher_view.h"

#include "base/text.h"
#include "platform/qt/screen_coordinates.h"
#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/mask.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr int panelWidth = 472;
constexpr int padding = 16;
constexpr int spacing = 12;
constexpr double cornerRadius = 22;
constexpr double borderWidth = 2;

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
constexpr int messageHeight = 80;
constexpr double messageFontSize = 14;

constexpr int contentWidth = panelWidth - 2 * padding;
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

int gridHeight(int tiles) {
    const int rows = (tiles + columns - 1) / columns;
    return rows * LauncherTile::tileSize.height() + (rows - 1) * tileSpacing;
}

QPoint tilePosition(int index) {
    return {padding + index % columns * (LauncherTile::tileSize.width() + tileSpacing),
            gridTop() + index / columns * (LauncherTile::tileSize.height() + tileSpacing)};
}

/// The application's name as a chip of limited width.
QString chipText(const QString& name) {
    const double decoration = chipSize(QString()).width();
    return fitText(name, chipMaxWidth - decoration, chipFontSize, QFont::DemiBold, 1).text;
}

}  // namespace

LauncherView::LauncherView(LauncherModel& model, const KeyBindings& bindings,
                           Compositing& compositing)
    : PanelWindow(PanelLevel::modal, PanelInput::takesClicks, compositing),
      model_(&model),
      changed_(model.changed().subscribe([this] { refresh(); })) {
    makeSearchRow();
    makeTiles(bindings);
    setAccessibleName(QStringLiteral("Launcher"));
    placeTiles();
    refresh();
    searchField_->setFocus();
    setMouseTracking(true);

    const auto screens = qtScreens();
    const auto origin = screens.empty() ? QPoint() : screens.front().geometry.topLeft();
    setScreenFrame(fromQtGeometry({origin, LauncherView::sizeHint()}, screens));
}

void LauncherView::detach() {
    changed_.reset();
    model_ = nullptr;
}

QSize LauncherView::sizeHint() const {
    return {panelWidth, gridTop() + gridHeight(static_cast<int>(tiles_.size())) + padding};
}

void LauncherView::makeSearchRow() {
    // A line break in a name would end the line of the placeholder, and what turns the direction of
    // writing would turn our own words.
    const auto name = QString::fromStdString(plainText(model_->appName())).simplified();
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
    auto colors = searchField_->palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, palette::ink);
    colors.setColor(QPalette::PlaceholderText, palette::muted);
    colors.setColor(QPalette::Highlight, palette::withOpacity(palette::teal, 0.4));
    colors.setColor(QPalette::HighlightedText, palette::ink);
    searchField_->setPalette(colors);
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
    for (const auto action : allSnapActions) {
        auto* const tile =
            new LauncherTile(action, QString::fromStdString(bindings.shortcutText(action)), this);
        connect(tile, &QAbstractButton::clicked, this, [this, action] {
            // Running an action closes the launcher, which takes the model along.
            if (const auto run = model_ != nullptr ? model_->run : nullptr) {
                run(action);
            }
        });
        tile->onPointerMoved = [this, tile](QPoint position) { pointerMoved(*tile, position); };
        tile->onFocused = [this, tile] { select(*tile); };
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
        select(tile);
    }
}

void LauncherView::select(const LauncherTile& tile) {
    const auto place = std::ranges::find(shown_, &tile);
    if (model_ != nullptr && place != shown_.end()) {
        model_->setSelection(static_cast<int>(place - shown_.begin()));
    }
}

void LauncherView::updateShape() {
    if (backdrop() == Backdrop::translucent) {
        clearMask();
        return;
    }
    setMask(roundedMask(rect(), cornerRadius));
}

void LauncherView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (backdrop() == Backdrop::opaque) {
        // Pixels that the mask leaves and the shape covers in part belong to the border.
        painter.fillRect(rect(), palette::ink);
    }
    paintRoundedRect(painter, QRectF(rect()), cornerRadius, palette::paper,
                     {palette::ink, borderWidth});

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
    PanelWindow::showEvent(event);
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
    PanelWindow::keyPressEvent(event);
}

void LauncherView::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->globalPosition().toPoint();
    hovered_ = nullptr;
}

void LauncherView::leaveEvent(QEvent* /*event*/) {
    hovered_ = nullptr;
}

}  // namespace tessellon
