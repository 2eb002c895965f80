#include "onboarding/onboarding_view.h"

#include "onboarding/last_touches_step_view.h"
#include "onboarding/permission_step_view.h"
#include "onboarding/try_it_step_view.h"
#include "onboarding/welcome_step_view.h"
#include "ui/accessible_role.h"
#include "ui/page_scroll.h"
#include "ui/widget_colors.h"

#include <QAbstractButton>
#include <QHideEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tessellon {
namespace {

TourStep* makeStep(OnboardingModel& model, QWidget* parent) {
    switch (model.step()) {
        case 0:
            return new WelcomeStep(model, parent);
        case OnboardingModel::permissionStep:
            return new PermissionStep(model, parent);
        case 2:
            return new TryItStep(model, parent);
        default:
            return new LastTouchesStep(model, parent);
    }
}

bool isReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

OnboardingView::OnboardingView(OnboardingModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      scroll_(new PageScroll(this)),
      navigation_(new OnboardingNavigation(model, this)) {
    setWindowColors(*this);
    setAccessibleRole(*this, QAccessible::Grouping);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(scroll_, 1);
    column->addWidget(navigation_);

    changed_ = model.changed().subscribe([this] { refresh(); });
    refresh();
}

OnboardingView::~OnboardingView() {
    model_.stop();
}

void OnboardingView::refresh() {
    const auto* const focused = focusWidget();
    navigation_->refresh();
    if (shownStep_ != model_.step()) {
        showStep();
        return;
    }
    shown_->refresh();
    // A button that has done its work may be gone.
    if (focused != nullptr && !(focused->isVisibleTo(this) && focused->isEnabled())) {
        focusBestControl();
    }
}

void OnboardingView::showStep() {
    shownStep_ = model_.step();
    shown_ = makeStep(model_, nullptr);
    shown_->setAutoFillBackground(false);
    scroll_->setWidget(shown_);  // deletes the step before
    scroll_->verticalScrollBar()->setValue(0);
    // What is to be done in the step comes before leaving it.
    QWidget* last = nullptr;
    for (const auto* const part :
         {static_cast<QWidget*>(shown_), static_cast<QWidget*>(navigation_)}) {
        for (auto* const control : part->findChildren<QAbstractButton*>()) {
            control->installEventFilter(this);
            if (last != nullptr) {
                setTabOrder(last, control);
            }
            last = control;
        }
    }
    announce();
    focusBestControl();
}

void OnboardingView::announce() {
    setAccessibleName(shown_->heading());
    // Read with the button that gets the focus.
    navigation_->primary().setAccessibleDescription(shown_->heading() + QLatin1Char(' ') +
                                                    shown_->text());
}

void OnboardingView::focusBestControl() {
    QWidget* best = &navigation_->primary();
    if (!best->isEnabled() && shown_->firstControl() != nullptr) {
        best = shown_->firstControl();
    }
    // Also where it has the focus already: its ring depends on how it came there, and assistive
    // technology reads it, with the step, once more.
    best->clearFocus();
    best->setFocus(lastUse_);
}

bool OnboardingView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        lastUse_ = Qt::TabFocusReason;
    } else if (event->type() == QEvent::MouseButtonPress) {
        lastUse_ = Qt::MouseFocusReason;
    }
    return QWidget::eventFilter(watched, event);
}

void OnboardingView::hideEvent(QHideEvent* event) {
    // A window that is minimized is hidden by the system.
    if (!event->spontaneous()) {
        model_.stop();
    }
    QWidget::hideEvent(event);
}

void OnboardingView::keyPressEvent(QKeyEvent* event) {
    auto& primary = navigation_->primary();
    const bool isOnButton = dynamic_cast<QAbstractButton*>(focusWidget()) != nullptr;
    if (isReturn(*event) && !isOnButton && primary.isEnabled() && !event->isAutoRepeat()) {
        lastUse_ = Qt::TabFocusReason;
        primary.click();
        return;
    }
    if (!scroll(event->key())) {
        QWidget::keyPressEvent(event);
    }
}

bool OnboardingView::scroll(int key) {
    auto& bar = *scroll_->verticalScrollBar();
    switch (key) {
        case Qt::Key_Up:
            bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
            return true;
        case Qt::Key_Down:
            bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
            return true;
        case Qt::Key_PageUp:
            bar.triggerAction(QAbstractSlider::SliderPageStepSub);
            return true;
        case Qt::Key_PageDown:
            bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
            return true;
        case Qt::Key_Home:
            bar.triggerAction(QAbstractSlider::SliderToMinimum);
            return true;
        case Qt::Key_End:
            bar.triggerAction(QAbstractSlider::SliderToMaximum);
            return true;
        default:
            return false;
    }
}

}  // namespace tessellon
