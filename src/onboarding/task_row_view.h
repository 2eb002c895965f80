// One thing to try in the tour, ticked off once it was done.
#pragma once

#include "onboarding/number_badge_view.h"
#include "onboarding/state_pill_view.h"
#include "onboarding/task_picture_view.h"
#include "onboarding/tour_tasks.h"
#include "ui/text_label.h"

#include <QWidget>

namespace tessellon {

/// Assistive technology reads it as one item, with the keys by their names and with its state.
class TaskRow : public QWidget {
  public:
    /// `number` is its place in the list, from 1.
    TaskRow(int number, const TourTask& task, SnapAction action, QWidget* parent = nullptr);

    /// `action` is what the shortcut to try does.
    void setTask(const TourTask& task, SnapAction action);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int number_;
    TaskState state_;
    NumberBadge* badge_;
    TaskPicture* picture_;
    TextLabel* title_;
    TextLabel* line_;
    StatePill* pill_;
};

}  // namespace tessellon
