#include "onboarding/task_row_view.h"

#include "onboarding/spoken_text_view.h"
#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int padding = 20;
constexpr int spacing = 15;
constexpr int textSpacing = 3;
constexpr int badgeSize = 34;
constexpr double titleSize = 14;
constexpr double lineSize = 12;
constexpr double radius = 18;

PillState pillOf(TaskState state) {
    switch (state) {
        case TaskState::done:
            return {QStringLiteral("Done"), palette::teal, Symbol::checkmarkCircleFill};
        case TaskState::current:
            return {QStringLiteral("Try it now"), palette::amber, {}};
        case TaskState::next:
            break;
    }
    return {QStringLiteral("Up next"), palette::muted, {}};
}

BadgeState badgeOf(TaskState state) {
    switch (state) {
        case TaskState::done:
            return BadgeState::done;
        case TaskState::current:
            return BadgeState::current;
        case TaskState::next:
            break;
    }
    return BadgeState::next;
}

}  // namespace

TaskRow::TaskRow(int number, const TourTask& task, SnapAction action, QWidget* parent)
    : QWidget(parent),
      number_(number),
      state_(task.state),
      badge_(new NumberBadge(number, badgeOf(task.state), badgeSize, this)),
      picture_(new TaskPicture(task.event, action, this)),
      title_(new TextLabel({}, titleSize, QFont::DemiBold, palette::ink, TextWrap::words, this)),
      line_(new TextLabel({}, lineSize, QFont::Medium, palette::muted, TextWrap::words, this)),
      pill_(new StatePill(pillOf(task.state), StatePillSize::small, this)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(padding, padding, padding, padding);
    row->setSpacing(spacing);
    row->addWidget(badge_, 0, Qt::AlignVCenter);
    row->addWidget(picture_, 0, Qt::AlignVCenter);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(textSpacing);
    texts->addStretch();
    texts->addWidget(title_);
    texts->addWidget(line_);
    texts->addStretch();
    row->addLayout(texts, 1);
    row->addWidget(pill_, 0, Qt::AlignVCenter);
    setAccessibleRole(*this, QAccessible::ListItem);
    setTask(task, action);
}

void TaskRow::setTask(const TourTask& task, SnapAction action) {
    const auto title = QString::fromStdString(task.title);
    const auto line = QString::fromStdString(task.line);
    state_ = task.state;
    badge_->setState(badgeOf(task.state));
    picture_->setAction(action);
    title_->setText(title);
    line_->setText(line);
    const auto pill = pillOf(task.state);
    pill_->setState(pill);
    setAccessibleName(
        QStringLiteral("%1. %2. %3").arg(QString::number(number_), spokenText(title), pill.text));
    setAccessibleDescription(spokenText(line));
    update();
}

void TaskRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool isCurrent = state_ == TaskState::current;
    paintRoundedRect(painter, rect(), radius, isCurrent ? palette::paper : palette::cream,
                     {isCurrent ? palette::ink : palette::line, control_style::outline});
}

}  // namespace tessellon
