// The panel of the status item as the user sees it: a column of what the model and the settings
// say, whose controls set off what the model is told to do.
#pragma once

#include "base/token.h"
#include "menu/menu_arrangements_view.h"
#include "menu/menu_footer_view.h"
#include "menu/menu_grid_view.h"
#include "menu/menu_header_view.h"
#include "menu/menu_model.h"
#include "menu/menu_switches_view.h"
#include "platform/user_defaults.h"
#include "ui/card_panel.h"
#include "ui/panel_scroll.h"

#include <string_view>
#include <vector>

namespace tessellon {

class MenuView : public CardPanel {
  public:
    /// The model has to be there until detach() or the end of the view, the settings as long as
    /// the view. The view's frame is as large as the content needs, but no higher than `area`
    /// (screen coordinates) unless that is empty: else the middle of the content scrolls between
    /// header and footer. It keeps that size.
    MenuView(MenuModel& model, UserDefaults& defaults, Compositing& compositing, const Rect& area);

    /// Lets go of the model and the settings: from now on nothing that happens to the view has an
    /// effect.
    void detach();

    /// Shows everything as it is after the motions under way.
    void finishAnimations() { grid_->finishAnimations(); }

    QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void makeSections();
    /// In logical pixels.
    void placeSections(int greatestHeight);
    void refresh();
    void settingChanged(std::string_view key);
    /// Moves the focus as an arrow key says; to the first control when none has it.
    void moveFocus(int key);

    /// Null once the view is detached.
    MenuModel* model_;
    UserDefaults& defaults_;
    Token modelChanged_;
    Token settingChanged_;
    MenuHeader* header_ = nullptr;
    PanelScroll* scroll_ = nullptr;
    MenuGrid* grid_ = nullptr;
    MenuSwitches* switches_ = nullptr;
    /// From top to bottom.
    std::vector<MenuSection*> sections_;
    int ruleTop_ = 0;
    int height_ = 0;
};

}  // namespace tessellon
