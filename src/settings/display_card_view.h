// One display on its page: which one it is, how large it is, and its own edge gap.
#pragma once

#include "base/token.h"
#include "settings/displays_model.h"
#include "ui/card.h"

#include <string>

namespace tessellon {

class Divide;
class PillToggle;
class SliderRow;

class DisplayCard : public Card {
  public:
    /// `position` counts from 1. The model must outlive the card.
    DisplayCard(DisplaysModel& model, const DisplayEntry& display, int position,
                QWidget* parent = nullptr);

  private:
    QWidget* makeHead(const DisplayEntry& display, int position);
    void showGap();

    DisplaysModel& model_;
    std::string key_;
    PillToggle* toggle_ = nullptr;
    Divide* divide_ = nullptr;
    SliderRow* gap_ = nullptr;
    Token gapsChanged_;
    Token gapChosen_;
};

}  // namespace tessellon
