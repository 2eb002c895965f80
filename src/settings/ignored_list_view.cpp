#include "settings/ignored_list_view.h"

#include "settings/flow_view.h"
#include "settings/ignored_pill_view.h"
#include "ui/accessible_role.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QTimerEvent>
#include <algorithm>
#include <array>
#include <utility>

namespace tessellon {
namespace {

constexpr std::array<QColor, RulesModel::tintCount> tints{palette::teal, palette::amber,
                                                          palette::lavender, palette::pink};

constexpr int flowSpacing = 8;
// The page is on the screen before icons are looked for, and each search takes but a part of what
// there is until the next picture.
constexpr int millisecondsBeforeSearch = 16;
constexpr int searchMilliseconds = 4;

}  // namespace

IgnoredList::IgnoredList(QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::List);
    setAccessibleName(QStringLiteral("Apps that never snap"));
    // Room for the rings of the first and last buttons.
    (new Flow(flowSpacing, this))
        ->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                             FocusRing::reach);
}

void IgnoredList::setEntries(const std::vector<IgnoredApplication>& entries) {
    const bool isShown = std::equal(
        entries.begin(), entries.end(), pills_.begin(), pills_.end(),
        [](const auto& entry, const auto* pill) { return pill->application() == entry; });
    if (isShown) {
        return;
    }
    const int focused = focusedPill();
    auto old = std::exchange(pills_, {});
    auto* const lost = focused >= 0 ? old[static_cast<std::size_t>(focused)] : nullptr;
    while (layout()->count() > 0) {
        delete layout()->takeAt(0);
    }
    for (const auto& entry : entries) {
        const auto kept = std::find_if(old.begin(), old.end(), [&entry](const auto* pill) {
            return pill->application() == entry;
        });
        auto* pill = kept != old.end() ? *kept : nullptr;
        if (pill != nullptr) {
            old.erase(kept);
        } else {
            pill = new IgnoredPill(entry, this);
            pill->setIconWanted([this] { findIconsSoon(); });
            QObject::connect(&pill->removeButton(), &QAbstractButton::clicked, this,
                             [this, identifier = entry.identifier] { removed_.emit(identifier); });
        }
        pill->setTint(tints.at(pills_.size() % tints.size()));
        bound(*pill);
        layout()->addWidget(pill);
        pill->show();
        pills_.push_back(pill);
    }
    orderTabs();
    const bool isGone = std::find(old.begin(), old.end(), lost) != old.end();
    if (isGone && !pills_.empty()) {
        const auto neighbour = std::min(static_cast<std::size_t>(focused), pills_.size() - 1);
        pills_[neighbour]->removeButton().setFocus(Qt::TabFocusReason);
    } else if (isGone && next_ != nullptr) {
        next_->setFocus(Qt::TabFocusReason);
    }
    for (auto* const pill : old) {
        pill->hide();
        // Its own button may be what removed it.
        pill->deleteLater();
    }
    updateGeometry();
}

int IgnoredList::focusedPill() const {
    const auto found = std::find_if(pills_.begin(), pills_.end(), [](const auto* pill) {
        return pill->removeButton().hasFocus();
    });
    return found != pills_.end() ? static_cast<int>(found - pills_.begin()) : -1;
}

/// New pills come last in the window's order; they belong between what is before the list and what
/// follows it.
void IgnoredList::orderTabs() const {
    if (next_ == nullptr || pills_.empty()) {
        return;
    }
    auto* before = next_->previousInFocusChain();
    while (before != next_ && (before->focusPolicy() == Qt::NoFocus || isAncestorOf(before))) {
        before = before->previousInFocusChain();
    }
    for (auto* const pill : pills_) {
        setTabOrder(before, &pill->removeButton());
        before = &pill->removeButton();
    }
}

/// Only a pill that has to be cut gets a bound, since that lays the whole list out again.
void IgnoredList::bound(IgnoredPill& pill) const {
    const bool isCut = room_ && pill.sizeHint().width() > *room_;
    pill.setMaximumWidth(isCut ? std::max(*room_, pill.minimumSizeHint().width())
                               : QWIDGETSIZE_MAX);
}

void IgnoredList::resizeEvent(QResizeEvent* /*event*/) {
    room_ = layout()->contentsRect().width();
    for (auto* const pill : pills_) {
        bound(*pill);
    }
}

void IgnoredList::findIconsSoon() {
    if (!search_.isActive()) {
        search_.start(millisecondsBeforeSearch, this);
    }
}

void IgnoredList::timerEvent(QTimerEvent* event) {
    if (event->timerId() != search_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    QElapsedTimer elapsed;
    elapsed.start();
    for (auto* const pill : pills_) {
        if (!pill->waitsForIcon()) {
            continue;
        }
        if (elapsed.elapsed() >= searchMilliseconds) {
            search_.start(0, this);
            return;
        }
        pill->findIcon();
    }
    search_.stop();
}

}  // namespace tessellon
