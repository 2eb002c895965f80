#include "settings/arrangements_page_view.h"

#include "settings/arrangement_row_view.h"
#include "settings/elided_label_view.h"
#include "settings/page_header_view.h"
#include "settings/section_title_view.h"
#include "ui/card.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <algorithm>
#include <iterator>
#include <utility>

namespace tessellon {
namespace {

constexpr int blockSpacing = 14;
constexpr int rowSpacing = 10;
constexpr double saveOpacity = 0.18;
constexpr double headingSize = 13.5;
constexpr double messageSize = 11.5;
constexpr double emptySize = 12;

}  // namespace

ArrangementsPage::ArrangementsPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent), model_(services), recorder_(services.recorder) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, FocusRing::reach);
    column->setSpacing(blockSpacing);
    column->addWidget(new PageHeader(
        QStringLiteral("Arrangements"),
        QStringLiteral("Save where your windows are, then put them all back with one click or "
                       "shortcut."),
        this));
    addSaveCard();
    saved_ = new SectionTitle(QStringLiteral("Saved"), this);
    column->addWidget(saved_);
    addEmptyCard();
    list_ = new QVBoxLayout;
    list_->setSpacing(rowSpacing);
    column->addLayout(list_);
    column->addStretch();
    changed_ = model_.changed().subscribe([this] { follow(); });
    recorderChanged_ = recorder_.changed().subscribe([this] { followRecorder(); });
    follow();
    followRecorder();
}

void ArrangementsPage::addSaveCard() {
    auto* const card = new Card({.fill = palette::withOpacity(palette::amber, saveOpacity)}, this);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(new ElidedLabel(
        QStringLiteral("Save current arrangement"),
        {.size = headingSize, .weight = QFont::DemiBold, .color = palette::ink}, card));
    message_ = new ElidedLabel({}, {.size = messageSize, .color = palette::muted}, card);
    texts->addWidget(message_);
    save_ = new PillButton(QStringLiteral("Save"), PillButtonStyle::primary, card);
    save_->setAccessibleName(QStringLiteral("Save current arrangement"));
    connect(save_, &QAbstractButton::clicked, this, [this] { model_.save(); });
    auto* const line = new QHBoxLayout;
    line->addLayout(texts, 1);
    line->addWidget(save_);
    card->column().addLayout(line);
    layout()->addWidget(card);
}

void ArrangementsPage::addEmptyCard() {
    empty_ = new Card({.fill = palette::paper}, this);
    empty_->column().addWidget(
        new TextLabel(QStringLiteral("Nothing saved yet. Set up your windows, then click Save."),
                      emptySize, QFont::Medium, palette::muted, TextWrap::words, empty_));
    layout()->addWidget(empty_);
}

void ArrangementsPage::follow() {
    const auto& message = model_.message();
    message_->setText(
        message ? QString::fromStdString(*message)
                : QStringLiteral("Every visible window of every app that isn't ignored."));
    saved_->setChip(QString::fromStdString(model_.count()), palette::amber);
    empty_->setVisible(model_.list().empty());
    followList();
}

void ArrangementsPage::followList() {
    const auto& list = model_.list();
    const auto before = std::exchange(rows_, {});
    auto gone = before;
    for (const auto& arrangement : list) {
        // An edit of the settings file may have doubled one.
        const auto found = std::ranges::find(gone, arrangement.id, &ArrangementRow::id);
        if (found != gone.end()) {
            rows_.push_back(*found);
            gone.erase(found);
        } else {
            rows_.push_back(new ArrangementRow(model_, recorder_, arrangement.id, this));
        }
    }
    passFocusOn(before, gone);
    for (auto* const row : gone) {
        list_->removeWidget(row);
        row->hide();
        row->deleteLater();  // it may be its own button that was clicked
    }
    bool isInOrder = true;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const auto place = static_cast<int>(i);
        const auto* const item = list_->itemAt(place);
        if (item == nullptr || item->widget() != rows_[i]) {
            list_->removeWidget(rows_[i]);
            list_->insertWidget(place, rows_[i]);
            isInOrder = false;
        }
        rows_[i]->showArrangement(i);
    }
    if (!isInOrder && !before.empty()) {
        orderTabs();
    }
}

void ArrangementsPage::followRecorder() {
    if (const auto& target = recorder_.target()) {
        const auto* const arrangement = std::get_if<HotkeyTarget::Arrangement>(&target->kind);
        recorded_ = arrangement != nullptr ? std::optional(arrangement->id) : std::nullopt;
    }
    for (auto* const row : rows_) {
        row->showNote(row->id() == recorded_ ? recorder_.note() : std::nullopt);
    }
}

void ArrangementsPage::passFocusOn(const std::vector<ArrangementRow*>& before,
                                   const std::vector<ArrangementRow*>& gone) const {
    const auto* const focused = window()->focusWidget();
    const auto remains = [&gone](const ArrangementRow* row) {
        return std::ranges::find(gone, row) == gone.end();
    };
    const auto left = std::ranges::find_if(
        gone, [focused](const auto* row) { return row->isAncestorOf(focused); });
    if (focused == nullptr || left == gone.end()) {
        return;
    }
    const auto place = std::ranges::find(before, *left);
    auto heir = std::find_if(place, before.end(), remains);
    if (heir == before.end()) {
        const auto earlier =
            std::find_if(std::make_reverse_iterator(place), before.rend(), remains);
        heir = earlier == before.rend() ? before.end() : std::prev(earlier.base());
    }
    QWidget* next = save_;
    if (heir != before.end()) {
        const auto controls = (*left)->controls();
        const auto* const which = std::ranges::find(controls, focused);
        if (which != controls.end()) {
            next = (*heir)->controls()[static_cast<std::size_t>(which - controls.begin())];
        }
    }
    next->setFocus((*left)->deletedBy());
}

void ArrangementsPage::orderTabs() {
    QWidget* previous = save_;
    for (const auto* const row : rows_) {
        for (auto* const control : row->controls()) {
            setTabOrder(previous, control);
            previous = control;
        }
    }
}

}  // namespace tessellon
