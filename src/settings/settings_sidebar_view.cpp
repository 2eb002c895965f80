#include "settings/settings_sidebar_view.h"

#include "app/preferences.h"
#include "settings/sidebar_item_view.h"
#include "ui/card.h"
#include "ui/control_style.h"
#include "ui/dot.h"
#include "ui/focus_ring.h"
#include "ui/glyph.h"
#include "ui/page_scroll.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int sideMargin = 16;
constexpr int topMargin = 24;
constexpr int bottomMargin = 18;
constexpr int spacing = 4;
constexpr int headSpacing = 10;
constexpr int belowHead = 14;
constexpr int aboveStatus = 16;
constexpr double edgeWidth = 1.5;

constexpr int glyphSize = 34;
constexpr double nameSize = 17;
constexpr double smallSize = 11;

constexpr double statusRadius = 14;
constexpr double statusTitleSize = 13;
constexpr int statusSpacing = 5;
constexpr int dotSize = 10;

}  // namespace

SettingsSidebar::SettingsSidebar(const UserDefaults& defaults, SettingsPage page, QWidget* parent)
    : QWidget(parent), defaults_(defaults) {
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, static_cast<int>(std::ceil(edgeWidth)), 0);
    auto* const scroll = new PageScroll(this);
    whole->addWidget(scroll);

    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(sideMargin, topMargin, sideMargin - PageScroll::barWidth,
                               bottomMargin);
    column->setSpacing(spacing);
    column->addWidget(makeHead());
    column->addSpacing(belowHead - spacing);
    for (const auto each : allSettingsPages) {
        auto* const added = new SidebarItem(each, content);
        items_.at(static_cast<std::size_t>(each)) = added;
        column->addWidget(added);
        connect(added, &QAbstractButton::clicked, this, [this, each] { selected_.emit(each); });
    }
    column->addStretch();
    column->addSpacing(aboveStatus - spacing);
    column->addWidget(makeStatusCard());
    scroll->setWidget(content);
    content->setAutoFillBackground(false);

    setPage(page);
    showCount();
    showStatus();
    changed_ = defaults.changed().subscribe([this](std::string_view key) {
        if (key == preference::ignored) {
            showCount();
        } else if (key == preference::paused) {
            showStatus();
        }
    });
}

void SettingsSidebar::setPage(SettingsPage page) {
    item(page).setChecked(true);
    // Tab comes to one item, as to one control. The toolkit would take the first of them for it
    // until one is focused.
    for (auto* const each : items_) {
        each->setFocusPolicy(each->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void SettingsSidebar::takeFocus() {
    for (auto* const each : items_) {
        if (each->isChecked()) {
            each->setFocus(Qt::OtherFocusReason);
        }
    }
}

void SettingsSidebar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette::cream);
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    painter.fillRect(QRectF(leftToRight ? width() - edgeWidth : 0, 0, edgeWidth, height()),
                     palette::line);
}

QWidget* SettingsSidebar::makeHead() {
    auto* const head = new QWidget(this);
    auto* const line = new QHBoxLayout(head);
    line->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    line->setSpacing(headSpacing);
    line->addWidget(new Glyph(glyphSize, head), 0, Qt::AlignVCenter);
    auto* const names = new QVBoxLayout;
    names->setSpacing(0);
    names->addWidget(new TextLabel(QStringLiteral("Tessellon"), nameSize, QFont::Bold, palette::ink,
                                   TextWrap::none, head));
    names->addWidget(new TextLabel(QStringLiteral("Settings"), smallSize, QFont::Medium,
                                   palette::muted, TextWrap::none, head));
    line->addLayout(names, 1);
    return head;
}

QWidget* SettingsSidebar::makeStatusCard() {
    auto* const card = new Card({.fill = palette::paper,
                                 .radius = statusRadius,
                                 .horizontalPadding = 12,
                                 .verticalPadding = 11,
                                 .border = {palette::line, control_style::outline}},
                                this);
    card->column().setSpacing(statusSpacing);
    auto* const line = new QHBoxLayout;
    line->setSpacing(7);
    statusDot_ = new Dot(dotSize, palette::teal, card);
    line->addWidget(statusDot_, 0, Qt::AlignVCenter);
    statusTitle_ = new TextLabel(QString(), statusTitleSize, QFont::DemiBold, palette::ink,
                                 TextWrap::words, card);
    line->addWidget(statusTitle_, 1);
    card->column().addLayout(line);
    statusText_ =
        new TextLabel(QString(), smallSize, QFont::Medium, palette::muted, TextWrap::words, card);
    card->column().addWidget(statusText_);
    return card;
}

SidebarItem& SettingsSidebar::item(SettingsPage page) const {
    return *items_.at(static_cast<std::size_t>(page));
}

void SettingsSidebar::showCount() {
    const auto count = static_cast<int>(ignoredApplications(defaults_).size());
    item(SettingsPage::rules)
        .setCount(count,
                  count == 1 ? QStringLiteral("1 app") : QStringLiteral("%1 apps").arg(count));
}

void SettingsSidebar::showStatus() {
    const bool paused = defaults_.boolForKey(preference::paused);
    statusDot_->setColor(paused ? palette::coral : palette::teal);
    statusTitle_->setText(paused ? QStringLiteral("Snapping is paused")
                                 : QStringLiteral("Snapping is on"));
    statusText_->setText(paused ? QStringLiteral("Turn it back on from the menu bar.")
                                : QStringLiteral("Hold ⌘ and drag a window, or press ⌃⌥ + a key."));
}

}  // namespace tessellon
