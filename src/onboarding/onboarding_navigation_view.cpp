#include "onboarding/onboarding_navigation_view.h"

#include "ui/control_style.h"
#include "ui/palette.h"

#include <QGridLayout>
#include <QPainter>
#include <array>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int sideMargin = 28;
constexpr int verticalMargin = 16;
constexpr int lastStep = OnboardingModel::stepCount - 1;
constexpr int tryItStep = 2;

struct Primary {
    const char16_t* text;
    Symbol symbol;
    SymbolSide side;
};

constexpr std::array<Primary, OnboardingModel::stepCount> primaries{{
    {u"Get started", Symbol::arrowRight, SymbolSide::trailing},
    {u"Continue", Symbol::arrowRight, SymbolSide::trailing},
    {u"Continue", Symbol::arrowRight, SymbolSide::trailing},
    {u"Finish", Symbol::checkmark, SymbolSide::leading},
}};

}  // namespace

OnboardingNavigation::OnboardingNavigation(OnboardingModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      back_(new PillButton(QStringLiteral("Back"), PillButtonStyle::quiet, this)),
      skip_(new PillButton(QStringLiteral("Skip"), PillButtonStyle::plain, this)),
      primary_(new PillButton({}, PillButtonStyle::primary, this)) {
    back_->setSymbol(Symbol::arrowLeft);
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(sideMargin, verticalMargin, sideMargin, verticalMargin);
    grid->addWidget(back_, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
    grid->addWidget(skip_, 0, 1, Qt::AlignCenter);
    grid->addWidget(primary_, 0, 2, Qt::AlignRight | Qt::AlignVCenter);
    // Equal sides keep what is in the middle there.
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(0, back_->sizeHint().width());
    grid->setRowMinimumHeight(0, back_->sizeHint().height());

    connect(back_, &QAbstractButton::clicked, this, [this] { model_.goTo(model_.step() - 1); });
    connect(skip_, &QAbstractButton::clicked, this, [this] { model_.goTo(lastStep); });
    connect(primary_, &QAbstractButton::clicked, this, [this] {
        if (model_.step() == lastStep) {
            model_.finish();
        } else {
            model_.goTo(model_.step() + 1);
        }
    });
    refresh();
}

void OnboardingNavigation::refresh() {
    const int step = model_.step();
    const auto& primary = primaries.at(static_cast<std::size_t>(step));
    primary_->setText(QString::fromUtf16(primary.text));
    primary_->setSymbol(primary.symbol, primary.side);
    primary_->setEnabled(step != OnboardingModel::permissionStep || model_.trusted());
    back_->setVisible(step > 0);
    skip_->setVisible(step == tryItStep);
}

void OnboardingNavigation::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(QRectF(0, 0, width(), control_style::outline), palette::line);
}

}  // namespace tessellon
