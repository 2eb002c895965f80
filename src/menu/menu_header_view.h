// The top of the panel: the program, whether it snaps, and what it did last.
#pragma once

#include "engine/window_engine.h"
#include "menu/menu_section_view.h"
#include "ui/chip.h"

#include <optional>

namespace tessellon {

class MenuHeader : public MenuSection {
  public:
    MenuHeader(const std::optional<LastSnap>& last, QWidget* parent);

    void setPaused(bool paused);

  private:
    void placeLast();

    Chip* state_;
    /// Null when nothing was snapped yet.
    QWidget* last_ = nullptr;
};

}  // namespace tessellon
