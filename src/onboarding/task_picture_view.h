// A small picture of what the user is to try.
#pragma once

#include "engine/snap_action.h"
#include "onboarding/tour.h"

#include <QWidget>

namespace tessellon {

/// Assistive technology passes over it.
class TaskPicture : public QWidget {
  public:
    /// `action` is what the shortcut to try does.
    TaskPicture(Tour::Event event, SnapAction action, QWidget* parent = nullptr);

    void setAction(SnapAction action);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Tour::Event event_;
    SnapAction action_;
};

}  // namespace tessellon
