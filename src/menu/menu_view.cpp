#include "menu/menu_view.h"

#include "app/preferences.h"
#include "ui/palette.h"
#include "ui/return_key.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <type_traits>

namespace tessellon {
namespace {

constexpr int panelWidth = 330;
constexpr int padding = 12;
constexpr int spacing = 10;
// A row of tiles, and no less on any screen.
constexpr int leastScrolledHeight = 64;
constexpr double ruleHeight = 1.5;
static_assert(panelWidth - 2 * padding == MenuSection::contentWidth);

bool isArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

bool isPlain(const QKeyEvent& event) {
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool canTakeFocus(const QAbstractButton* button) {
    return button->isEnabled() && button->isVisible();
}

/// Where the middle of the control is in the panel, from the left.
int middle(const QAbstractButton& button) {
    return button.mapTo(button.window(), button.rect().center()).x();
}

/// The control of the row that can be used and whose middle is nearest; null without one.
QAbstractButton* nearest(const MenuSection::Row& row, int x) {
    QAbstractButton* best = nullptr;
    for (auto* const control : row) {
        const auto distance = [x](const QAbstractButton& b) { return std::abs(middle(b) - x); };
        if (canTakeFocus(control) && (best == nullptr || distance(*control) < distance(*best))) {
            best = control;
        }
    }
    return best;
}

/// The next control of the row that can be used, to the right with a `step` of 1, to the left with
/// -1; null at the row's end.
QAbstractButton* beside(const MenuSection::Row& row, const QAbstractButton& control, int step) {
    auto place = std::ranges::find(row, &control) - row.begin() + step;
    for (; place >= 0 && place < std::ssize(row); place += step) {
        auto* const candidate = row[static_cast<std::size_t>(place)];
        if (canTakeFocus(candidate)) {
            return candidate;
        }
    }
    return nullptr;
}

/// Calls what the member of the model holds, which may destroy the model.
template <typename... Args>
void call(MenuModel* model, std::function<void(Args...)> MenuModel::*member,
          const std::type_identity_t<Args>&... args) {
    if (const auto callback = model != nullptr ? model->*member : nullptr) {
        callback(args...);
    }
}

}  // namespace

MenuView::MenuView(MenuModel& model, UserDefaults& defaults, Compositing& compositing,
                   const Rect& area)
    : CardPanel(PanelLevel::popUpMenu, compositing),
      model_(&model),
      defaults_(defaults),
      modelChanged_(model.changed().subscribe([this] { refresh(); })),
      settingChanged_(
          defaults.changed().subscribe([this](std::string_view key) { settingChanged(key); })) {
    setAccessibleName(QStringLiteral("Tessellon"));
    makeSections();
    placeSections(greatestHeight(area));
    refresh();
    // Else the toolkit would give the focus to the first tile, and that would show its ring.
    setFocus();
    setSizeOnScreen(MenuView::sizeHint(), area);
}

void MenuView::detach() {
    modelChanged_.reset();
    settingChanged_.reset();
    model_ = nullptr;
}

QSize MenuView::sizeHint() const {
    return {panelWidth, height_};
}

void MenuView::makeSections() {
    header_ = new MenuHeader(model_->last(), this);
    scroll_ = new PanelScroll(this);
    auto* const middle = &scroll_->content();
    auto* const heading = new MenuSnapHeading(middle);
    grid_ =
        new MenuGrid([this](SnapAction action) { call(model_, &MenuModel::snap, action); }, middle);
    auto* const arrangements = new MenuArrangements(
        model_->arrangements(),
        {.save = [this] { call(model_, &MenuModel::save); },
         .apply = [this](const Arrangement& a) { call(model_, &MenuModel::apply, a); }},
        middle);
    const auto setSetting = [this](std::string_view key, bool value) {
        if (model_ != nullptr) {
            defaults_.setBool(key, value);
        }
    };
    switches_ = new MenuSwitches(
        model_->appName(),
        {.pause = [setSetting](bool on) { setSetting(preference::paused, on); },
         .toggleIgnored =
             [this] {
                 if (model_ != nullptr) {
                     model_->toggleIgnored();
                     refresh();
                 }
             },
         .tiling = [setSetting](bool on) { setSetting(preference::tilingEnabled, on); },
         .tile = [this] { call(model_, &MenuModel::tile); }},
        middle);
    switches_->setIgnorable(model_->bundleID().has_value());
    auto* const footer =
        new MenuFooter({.settings = [this] { call(model_, &MenuModel::settings); },
                        .checkUpdates = [this] { call(model_, &MenuModel::checkUpdates); },
                        .quit = [this] { call(model_, &MenuModel::quit); }},
                       this);
    sections_ = {header_, heading, grid_, arrangements, switches_, footer};
    for (const auto* const section : sections_) {
        for (const auto& row : section->rows()) {
            for (auto* const control : row) {
                control->installEventFilter(this);
            }
        }
    }
}

void MenuView::placeSections(int greatestHeight) {
    constexpr int side = MenuSection::sideOverhang;
    constexpr int overhang = MenuSection::verticalOverhang;
    int scrolledHeight = -spacing;
    for (auto* const section : sections_) {
        if (section != sections_.front() && section != sections_.back()) {
            scrolledHeight += spacing;
            section->moveContent({side, overhang + scrolledHeight});
            scrolledHeight += section->contentHeight();
        }
    }
    auto& footer = *sections_.back();
    const int footerRoom =
        static_cast<int>(std::ceil(ruleHeight)) + spacing + footer.contentHeight() + padding;

    header_->moveContent({padding, padding});
    int top = padding + header_->contentHeight() + spacing;
    const int room = std::max(greatestHeight - top - spacing - footerRoom, leastScrolledHeight);
    scroll_->setGeometry(padding - side, top - overhang, MenuSection::contentWidth + 2 * side,
                         std::min(scrolledHeight, room) + 2 * overhang);
    scroll_->setContentHeight(scrolledHeight + 2 * overhang);
    ruleTop_ = top + std::min(scrolledHeight, room) + spacing;
    height_ = ruleTop_ + footerRoom;
    footer.moveContent({padding, height_ - padding - footer.contentHeight()});
}

void MenuView::refresh() {
    if (model_ == nullptr) {
        return;
    }
    const bool paused = defaults_.boolForKey(preference::paused);
    header_->setPaused(paused);
    grid_->setEnabled(model_->canSnap() && !paused);
    switches_->setPaused(paused);
    switches_->setIgnored(model_->ignored());
    switches_->setTiling(defaults_.boolForKey(preference::tilingEnabled));
}

void MenuView::settingChanged(std::string_view key) {
    if (key == preference::paused || key == preference::tilingEnabled) {
        refresh();
    }
}

void MenuView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintCard(painter);
    painter.setRenderHint(QPainter::Antialiasing);  // its height is no whole number
    painter.fillRect(QRectF(padding, ruleTop_, MenuSection::contentWidth, ruleHeight),
                     palette::line);
}

bool MenuView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const auto* const control = static_cast<QWidget*>(watched);
        if (scroll_->isAncestorOf(control)) {
            scroll_->reveal(*control);
        }
        return false;
    }
    if (event->type() != QEvent::KeyPress) {
        return CardPanel::eventFilter(watched, event);
    }
    const auto& key = *static_cast<QKeyEvent*>(event);
    auto* const button = qobject_cast<QAbstractButton*>(watched);
    if (button == nullptr || !isPlain(key)) {
        return false;
    }
    if (isArrow(key.key())) {
        moveFocus(key.key());
        return true;
    }
    return clickByReturn(*button, key);
}

void MenuView::keyPressEvent(QKeyEvent* event) {
    if (isArrow(event->key()) && isPlain(*event)) {
        moveFocus(event->key());
        return;
    }
    CardPanel::keyPressEvent(event);
}

void MenuView::moveFocus(int key) {
    std::vector<const MenuSection::Row*> rows;
    for (const auto* const section : sections_) {
        for (const auto& row : section->rows()) {
            if (std::ranges::any_of(row, canTakeFocus)) {
                rows.push_back(&row);
            }
        }
    }
    const auto* const focused = qobject_cast<QAbstractButton*>(focusWidget());
    const auto current = std::ranges::find_if(rows, [focused](const MenuSection::Row* row) {
        return std::ranges::find(*row, focused) != row->end();
    });
    QAbstractButton* next = nullptr;
    if (focused == nullptr || current == rows.end()) {
        next = rows.empty() ? nullptr : nearest(*rows.front(), 0);
    } else if (key == Qt::Key_Up) {
        next = current != rows.begin() ? nearest(**std::prev(current), middle(*focused)) : nullptr;
    } else if (key == Qt::Key_Down) {
        const auto below = std::next(current);
        next = below != rows.end() ? nearest(**below, middle(*focused)) : nullptr;
    } else {
        next = beside(**current, *focused, key == Qt::Key_Left ? -1 : 1);
    }
    if (next != nullptr) {
        next->setFocus(Qt::TabFocusReason);
    }
}

}  // namespace tessellon
