#include "settings/ignored_list_view.h"

#include "settings/flow_view.h"
#include "settings/installed_icon_view.h"
#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/return_key.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QTimerEvent>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace tessellon {
namespace {

constexpr std::array<QColor, RulesModel::tintCount> tints{palette::teal, palette::amber,
                                                          palette::lavender, palette::pink};
constexpr double tintOpacity = 0.22;

constexpr int flowSpacing = 8;
constexpr int sidePadding = 10;
constexpr int verticalPadding = 6;
constexpr int partSpacing = 6;
constexpr int iconSize = 18;
constexpr double nameSize = 13;
constexpr int removeSize = 18;
constexpr double crossSize = 12;
constexpr double crossStroke = 3;
constexpr int leastName = 24;
// The page is on the screen before icons are looked for, and each search takes but a part of what
// there is until the next picture.
constexpr int millisecondsBeforeSearch = 16;
constexpr int searchMilliseconds = 4;

QFont nameFont() {
    return interfaceFont(nameSize, QFont::DemiBold);
}

/// Space and Return press it.
class RemoveButton : public QAbstractButton {
  public:
    RemoveButton(const QString& name, QWidget* parent) : QAbstractButton(parent) {
        setAccessibleName(name);
        setToolTip(name.toHtmlEscaped());
        setFixedSize(removeSize, removeSize);
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::ArrowCursor);
        new FocusRing(*this, removeSize / 2.0);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        if (isDown() || underMouse()) {
            paintCapsule(painter, rect(), palette::withOpacity(palette::ink, isDown() ? 0.2 : 0.1));
        }
        const QRectF cross(rect().center() + QPointF(0.5 - crossSize / 2, 0.5 - crossSize / 2),
                           QSizeF(crossSize, crossSize));
        drawSymbol(painter, Symbol::xmark, cross, palette::ink, crossStroke);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!clickByReturn(*this, *event)) {
            QAbstractButton::keyPressEvent(event);
        }
    }
};

}  // namespace

class IgnoredPill : public QWidget {
  public:
    IgnoredPill(IgnoredApplication application, IgnoredList* list)
        : QWidget(list),
          list_(*list),
          application_(std::move(application)),
          name_(singleLine(application_.name)),
          nameWidth_(static_cast<int>(std::ceil(textWidth(nameFont(), name_)))),
          height_(std::max(
                      {iconSize, removeSize, static_cast<int>(std::ceil(lineHeight(nameFont())))}) +
                  2 * verticalPadding),
          remove_(new RemoveButton(QStringLiteral("Remove ") + name_, this)) {
        setAccessibleRole(*this, QAccessible::ListItem);
        setAccessibleName(name_);
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    }

    const IgnoredApplication& application() const { return application_; }
    QAbstractButton& removeButton() const { return *remove_; }

    void setTint(const QColor& tint) {
        if (tint != tint_) {
            tint_ = tint;
            update();
        }
    }

    /// Has been drawn without its icon, which has not been looked for yet.
    bool waitsForIcon() const { return waitsForIcon_; }
    void findIcon() {
        icon_ = picture().find();
        waitsForIcon_ = false;
        update();
    }

    QSize sizeHint() const override { return {furniture() + nameWidth_, height_}; }
    QSize minimumSizeHint() const override {
        return {furniture() + std::min(nameWidth_, leastName), height_};
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintCapsule(painter, rect(), palette::withOpacity(tint_, tintOpacity),
                     {palette::ink, control_style::outline});
        if (application_.isInstalled) {
            const QRect square(sidePadding, (height() - iconSize) / 2, iconSize, iconSize);
            paintIcon(painter, QStyle::visualRect(layoutDirection(), rect(), square));
        }
        painter.setFont(nameFont());
        painter.setPen(palette::ink);
        drawLine(painter, QStyle::visualRect(layoutDirection(), rect(), nameRect()), fittedName_,
                 Qt::AlignLeading);
    }
    void resizeEvent(QResizeEvent* /*event*/) override {
        const QRect place(width() - sidePadding - removeSize, (height() - removeSize) / 2,
                          removeSize, removeSize);
        remove_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        const int room = nameRect().width();
        fittedName_ =
            room < nameWidth_ ? fitText(name_, room, nameSize, QFont::DemiBold, 1).text : name_;
    }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip) {
            const auto position = static_cast<QHelpEvent*>(event)->globalPos();
            // What is cut off can be read in whole; a name is never markup.
            QToolTip::showText(position, fittedName_ != name_ ? name_.toHtmlEscaped() : QString(),
                               this);
            return true;
        }
        return QWidget::event(event);
    }

  private:
    /// All that the name shares the pill with.
    int furniture() const { return nameLeft() + partSpacing + removeSize + sidePadding; }
    int nameLeft() const {
        return sidePadding + (application_.isInstalled ? iconSize + partSpacing : 0);
    }
    QRect nameRect() const { return {nameLeft(), 0, width() - furniture(), height()}; }

    InstalledPicture picture() const {
        return {QString::fromStdString(application_.icon), iconSize, devicePixelRatio()};
    }
    void paintIcon(QPainter& painter, const QRect& square) {
        if (!icon_ || (!icon_->isNull() && icon_->devicePixelRatio() > devicePixelRatio())) {
            icon_ = picture().known();
        }
        if (!icon_) {
            waitsForIcon_ = true;
            list_.findIconsSoon();
        } else if (icon_->isNull()) {
            drawSymbol(painter, Symbol::squareGrid2x2, square, palette::muted);
        } else {
            // As large as the picture is, which may be less than there is room for.
            QRectF frame(QPointF(), icon_->deviceIndependentSize());
            frame.moveCenter(QRectF(square).center());
            painter.drawImage(frame, *icon_);
        }
    }

    IgnoredList& list_;

    IgnoredApplication application_;
    QString name_;
    /// Null when there is none; nothing before it was looked for.
    std::optional<QImage> icon_;
    bool waitsForIcon_ = false;
    int nameWidth_;
    int height_;
    QString fittedName_;
    QColor tint_;
    RemoveButton* remove_;
};

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
