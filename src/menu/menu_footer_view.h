// The end of the panel: what concerns the program itself.
#pragma once

#include "menu/menu_section_view.h"

#include <functional>

namespace tessellon {

class MenuFooter : public MenuSection {
  public:
    struct Callbacks {
        std::function<void()> settings;
        std::function<void()> checkUpdates;
        std::function<void()> quit;
    };

    MenuFooter(const Callbacks& callbacks, QWidget* parent);
};

}  // namespace tessellon
