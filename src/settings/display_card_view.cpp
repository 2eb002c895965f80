#include "settings/display_card_view.h"

#include "settings/elided_label_view.h"
#include "ui/accessible_role.h"
#include "ui/chip.h"
#include "ui/control_style.h"
#include "ui/divide.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/pill_toggle.h"
#include "ui/row.h"
#include "ui/shapes.h"
#include "ui/slider_row.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int rowSpacing = 10;
constexpr int headSpacing = 14;
constexpr int chipSpacing = 8;
constexpr int textSpacing = 2;
constexpr double nameSize = 15;
constexpr double sizeLineSize = 12;

constexpr PillSlider::Range gapRange{0, 40};

/// A small picture of a monitor with the display's place in the list on it.
class PositionBadge : public QWidget {
  public:
    PositionBadge(int position, const QColor& fill, QWidget* parent)
        : QWidget(parent), number_(QString::number(position)), fill_(fill) {
        setFixedSize(46, 38);
        setAccessibleRole(*this, QAccessible::StaticText);
        setAccessibleName(number_);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        const QRectF screen(0, 0, width(), 31);
        const QRectF foot(width() / 2.0 - 9, 36, 18, 2);
        const QRectF neck(width() / 2.0 - 3, screen.bottom() - 1, 6, 6);
        QPainter painter(this);
        painter.fillRect(neck, palette::ink);
        paintCapsule(painter, foot, palette::ink);
        paintRoundedRect(painter, screen, 7, palette::paper);
        paintRoundedRect(painter, screen, 7, fill_, {palette::ink, control_style::outline});
        painter.setPen(palette::ink);
        painter.setFont(interfaceFont(15, QFont::Bold));
        drawLine(painter, screen, number_);
    }

  private:
    QString number_;
    QColor fill_;
};

QColor badgeFill(const DisplayEntry& display) {
    return display.isMain ? palette::withOpacity(palette::teal, 0.3) : palette::cream;
}

}  // namespace

DisplayCard::DisplayCard(DisplaysModel& model, const DisplayEntry& display, int position,
                         QWidget* parent)
    : Card(rowsCardStyle(), parent), model_(model), key_(display.key) {
    const auto name = QString::fromStdString(display.name);
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(name);
    column().setSpacing(rowSpacing);
    column().addWidget(makeHead(display, position));
    column().addWidget(new Divide(this));

    toggle_ = new PillToggle(QStringLiteral("Own edge gap"));
    toggle_->setAccessibleDescription(name);
    column().addWidget(new Row(QStringLiteral("Own edge gap"), QString(), toggle_, this));
    connect(toggle_, &QAbstractButton::clicked, this, [this](bool isOn) {
        if (isOn) {
            model_.addOwnGap(key_);
        } else {
            model_.removeOwnGap(key_);
        }
    });

    divide_ = new Divide(this);
    column().addWidget(divide_);
    gap_ = new SliderRow({.title = QStringLiteral("Gap at this display's edges"),
                          .subtitle = QStringLiteral("Used instead of the gap in General."),
                          .range = gapRange,
                          .unit = QStringLiteral("px"),
                          .color = palette::amber},
                         model_.ownGap(key_), this);
    column().addWidget(gap_);
    gapChosen_ =
        gap_->valueChanged().subscribe([this](double gap) { model_.setOwnGap(key_, gap); });
    gapsChanged_ = model_.changed().subscribe([this] { showGap(); });
    showGap();
}

QWidget* DisplayCard::makeHead(const DisplayEntry& display, int position) {
    auto* const head = new QWidget(this);
    auto* const line = new QHBoxLayout(head);
    line->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    line->setSpacing(headSpacing);
    line->addWidget(new PositionBadge(position, badgeFill(display), head), 0, Qt::AlignVCenter);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(textSpacing);
    auto* const title = new QHBoxLayout;
    title->setSpacing(chipSpacing);
    title->addWidget(
        new ElidedLabel(QString::fromStdString(display.name),
                        {.size = nameSize, .weight = QFont::Bold, .color = palette::ink}, head));
    if (display.isMain) {
        title->addWidget(new Chip(QStringLiteral("Main"), palette::teal, ChipDot::none, head), 0,
                         Qt::AlignVCenter);
    }
    title->addStretch(1);
    texts->addLayout(title);
    texts->addWidget(new TextLabel(QString::fromStdString(display.sizeLine), sizeLineSize,
                                   QFont::Medium, palette::muted, TextWrap::words, head));
    line->addLayout(texts, 1);
    return head;
}

void DisplayCard::showGap() {
    const bool isOn = model_.hasOwnGap(key_);
    toggle_->setChecked(isOn);
    gap_->setValue(model_.ownGap(key_));
    divide_->setVisible(isOn);
    gap_->setVisible(isOn);
}

}  // namespace tessellon
