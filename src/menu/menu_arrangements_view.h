// The saved arrangements in the panel.
#pragma once

#include "arrangements/arrangement.h"
#include "menu/menu_button_view.h"
#include "menu/menu_section_view.h"

#include <QStringList>
#include <cstddef>
#include <functional>
#include <vector>

namespace tessellon {

/// One arrangement: its name and the keys that apply it.
class MenuArrangementRow : public MenuButton {
  public:
    MenuArrangementRow(const Arrangement& arrangement, QWidget* parent);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString name_;
    QStringList keys_;
};

class MenuArrangements : public MenuSection {
  public:
    /// How many are listed.
    static constexpr std::size_t mostRows = 4;

    struct Callbacks {
        std::function<void()> save;
        std::function<void(const Arrangement&)> apply;
    };

    MenuArrangements(const std::vector<Arrangement>& arrangements, const Callbacks& callbacks,
                     QWidget* parent);
};

}  // namespace tessellon
