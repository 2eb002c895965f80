#include "onboarding/permission_step_view.h"

#include "onboarding/number_badge_view.h"
#include "ui/accessible_role.h"
#include "ui/card.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"

#include <QHBoxLayout>
#include <array>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int listPadding = 22;
constexpr int listSpacing = 16;
constexpr int pictureSpacing = 20;
constexpr int badgeSize = 30;
constexpr int badgeSpacing = 14;
constexpr double textSize = 14;
constexpr int actionSpacing = 24;
constexpr int pillSpacing = 14;
constexpr int noteSpacing = 12;

PillState pillOf(bool trusted) {
    return trusted ? PillState{QStringLiteral("Granted ✓"), palette::teal, {}}
                   : PillState{QStringLiteral("Waiting for permission…"), palette::lavender, {}};
}

}  // namespace

PermissionStep::PermissionStep(OnboardingModel& model, QWidget* parent)
    : TourStep(model, parent),
      greeting_(new Greeting(this)),
      picture_(new SettingsPicture(Permission::missing)) {
    column().addWidget(greeting_);
    addHeader(QStringLiteral("Let Tessellon move your windows"),
              QStringLiteral("macOS asks you to switch on Accessibility so Tessellon can arrange "
                             "your windows. It only moves and resizes them. It never reads "
                             "what's inside."));
    column().addWidget(makeList());
    column().addSpacing(actionSpacing - FocusRing::reach);

    open_ = new PillButton(QStringLiteral("Open System Settings"), PillButtonStyle::primary, this);
    open_->setSymbol(Symbol::arrowUpForwardSquare);
    pill_ = new StatePill(pillOf(model.trusted()), StatePillSize::regular, this);
    auto* const action = new QHBoxLayout;
    action->setContentsMargins(0, FocusRing::reach, 0, FocusRing::reach);
    action->setSpacing(pillSpacing);
    action->addWidget(open_);
    action->addWidget(pill_);
    action->addStretch();
    column().addLayout(action);
    column().addSpacing(noteSpacing - FocusRing::reach);
    note_ = new Note(this);
    column().addWidget(note_);
    column().addStretch(1);

    connect(open_, &QAbstractButton::clicked, this, [this] { this->model().requestTrust(); });
    refresh();
}

QWidget* PermissionStep::makeList() {
    auto* const list = new Card({.fill = palette::paper,
                                 .radius = 18,
                                 .horizontalPadding = listPadding,
                                 .verticalPadding = listPadding,
                                 .border = {palette::line, control_style::outline}},
                                this);
    setAccessibleRole(*list, QAccessible::List);
    list->setAccessibleName(QStringLiteral("What to do"));
    auto* const line = new QHBoxLayout;
    line->setSpacing(pictureSpacing);
    auto* const rows = new QVBoxLayout;
    rows->setSpacing(listSpacing);
    rows->addStretch(1);
    const std::array texts{
        QStringLiteral("Open System Settings › Privacy & Security › Accessibility"),
        QStringLiteral("Switch on Tessellon in the list"),
        QStringLiteral("Come back here. We'll notice on our own")};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto number = static_cast<int>(i) + 1;
        auto* const row = new QHBoxLayout;
        row->setSpacing(badgeSpacing);
        row->addWidget(new NumberBadge(number, BadgeState::current, badgeSize, list), 0,
                       Qt::AlignVCenter);
        auto* const label = new TextLabel(texts.at(i), textSize, QFont::DemiBold, palette::ink,
                                          TextWrap::words, list);
        label->setAccessibleName(QStringLiteral("%1. %2").arg(number).arg(texts.at(i)));
        row->addWidget(label, 1);
        rows->addLayout(row);
    }
    rows->addStretch(1);
    line->addLayout(rows, 1);
    line->addWidget(picture_, 0, Qt::AlignVCenter);
    list->column().addLayout(line);
    return list;
}

void PermissionStep::refresh() {
    const bool trusted = model().trusted();
    if (trusted) {
        greeting_->greet(palette::teal, Blush::rosy, QStringLiteral("Thank you!"), Symbol::heart);
    } else {
        greeting_->greet(palette::lavender, Blush::none, QStringLiteral("May we?"),
                         Symbol::handRaised);
    }
    picture_->setPermission(trusted ? Permission::granted : Permission::missing);
    open_->setVisible(!trusted);
    pill_->setState(pillOf(trusted));
    note_->setNote(model().trustNote());
    open_->setAccessibleDescription(QString::fromStdString(model().trustNote().value_or("")));
}

}  // namespace tessellon
