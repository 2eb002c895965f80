// The switches of the panel: pausing, ignoring the application in front, tiling.
#pragma once

#include "menu/menu_button_view.h"
#include "menu/menu_section_view.h"
#include "ui/pill_toggle.h"
#include "ui/symbols.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

/// What a switch does: a symbol, a title and one or two lines that explain it. To assistive
/// technology it is part of the switch.
class MenuSwitchText : public QWidget {
  public:
    struct Look {
        Symbol symbol;
        QColor color;
        QString title;
        /// A chip behind the title; "" for none.
        QString chip;
    };

    MenuSwitchText(const Look& look, QWidget* parent);

    /// Of a subtitle that is too long, `name` is shortened, which it begins with; "" for none.
    void setSubtitle(const QString& name, const QString& rest);

    /// The subtitle as it is drawn in the present width: one line or two.
    const QStringList& lines() const { return lines_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    double textLeft() const;
    void breakLines();

    Look look_;
    QString name_;
    QString rest_;
    QStringList lines_;
};

class MenuSwitches : public MenuSection {
  public:
    struct Callbacks {
        std::function<void(bool)> pause;
        std::function<void()> toggleIgnored;
        std::function<void(bool)> tiling;
        std::function<void()> tile;
    };

    /// `appName` is that of the application in front, if there is one.
    MenuSwitches(const std::optional<std::string>& appName, const Callbacks& callbacks,
                 QWidget* parent);

    // What the switches show.
    void setPaused(bool paused);
    void setIgnored(bool ignored);
    void setTiling(bool tiling);

    /// Whether there is an application that could be ignored.
    void setIgnorable(bool ignorable) { ignore_->setEnabled(ignorable); }

  private:
    PillToggle* addSwitch(const MenuSwitchText::Look& look, MenuSwitchText*& text);
    /// Below the rows that are placed already, with the controls in the middle of the height.
    void placeRow(MenuSwitchText& text, const std::vector<QWidget*>& controls, int height);

    MenuSwitchText* pauseText_ = nullptr;
    MenuSwitchText* ignoreText_ = nullptr;
    MenuSwitchText* tilingText_ = nullptr;
    PillToggle* pause_;
    PillToggle* ignore_;
    MenuCapsuleButton* tile_;
    PillToggle* tiling_;
};

}  // namespace tessellon
