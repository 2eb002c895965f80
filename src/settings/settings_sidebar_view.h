// The sidebar of the settings window: the pages, and whether windows snap at the moment.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/user_defaults.h"
#include "settings/settings_page.h"

#include <QWidget>
#include <array>

namespace tessellon {

class Dot;
class SidebarItem;
class TextLabel;

class SettingsSidebar : public QWidget {
  public:
    /// Follows the settings, which must outlive it.
    SettingsSidebar(const UserDefaults& defaults, SettingsPage page, QWidget* parent = nullptr);

    /// Highlights another page, without a word to the subscribers.
    void setPage(SettingsPage page);
    /// Gives the keyboard to the item that is highlighted.
    void takeFocus();

    /// Emitted with the page that the user has chosen.
    const Signal<SettingsPage>& selected() const { return selected_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* makeHead();
    QWidget* makeStatusCard();
    SidebarItem& item(SettingsPage page) const;
    void showCount();
    void showStatus();

    const UserDefaults& defaults_;
    std::array<SidebarItem*, allSettingsPages.size()> items_{};
    Dot* statusDot_ = nullptr;
    TextLabel* statusTitle_ = nullptr;
    TextLabel* statusText_ = nullptr;
    Signal<SettingsPage> selected_;
    Token changed_;
};

}  // namespace tessellon
