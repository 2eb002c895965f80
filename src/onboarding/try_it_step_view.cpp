#include "onboarding/try_it_step_view.h"

#include "onboarding/spoken_text_view.h"
#include "ui/accessible_role.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int rowSpacing = 14;
constexpr int offerSpacing = 18;
constexpr int buttonSpacing = 16;
constexpr double textSize = 13;

}  // namespace

TryItStep::TryItStep(OnboardingModel& model, QWidget* parent) : TourStep(model, parent) {
    addHeader(QStringLiteral("Give it a spin"),
              QStringLiteral("Try each one now. We'll tick them off as you go."));
    auto* const list = new QWidget(this);
    setAccessibleRole(*list, QAccessible::List);
    list->setAccessibleName(QStringLiteral("Things to try"));
    auto* const listColumn = new QVBoxLayout(list);
    listColumn->setContentsMargins(0, 0, 0, 0);
    listColumn->setSpacing(rowSpacing);
    for (const auto& task : model.tasks()) {
        const auto number = static_cast<int>(rows_.size()) + 1;
        rows_.push_back(new TaskRow(number, task, model.actionToTry(), list));
        listColumn->addWidget(rows_.back());
    }
    column().addWidget(list);
    column().addSpacing(offerSpacing);
    auto* const hint =
        new TextLabel(QStringLiteral("Click another window first. This one stays where it is."),
                      textSize, QFont::Medium, palette::muted, TextWrap::words, this);
    column().addWidget(hint);
    addOffer();
    column().addStretch(1);
    refresh();
}

void TryItStep::addOffer() {
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(0, FocusRing::reach, 0, FocusRing::reach);
    row->setSpacing(buttonSpacing);
    offerText_ = new TextLabel({}, textSize, QFont::Medium, palette::muted, TextWrap::words, this);
    row->addWidget(offerText_, 1);
    offer_ = new PillButton(QStringLiteral("Use ⌃⌘ instead of ⌃⌥"), PillButtonStyle::quiet, this);
    offer_->setAccessibleName(spokenText(offer_->text()));
    row->addWidget(offer_);
    column().addLayout(row);
    connect(offer_, &QAbstractButton::clicked, this, [this] { model().useControlCommand(); });
}

void TryItStep::refresh() {
    const auto tasks = model().tasks();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i]->setTask(tasks[i], model().actionToTry());
    }
    const auto& reason = model().controlCommandReason();
    offerText_->setText(QString::fromStdString(reason.value_or("")));
    offerText_->setAccessibleName(spokenText(offerText_->text()));
    offerText_->setVisible(reason.has_value());
    offer_->setVisible(reason.has_value());
}

}  // namespace tessellon
