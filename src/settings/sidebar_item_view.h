// One page in the sidebar of the settings window.
#pragma once

#include "settings/settings_page.h"

#include <QAbstractButton>
#include <QString>

namespace tessellon {

/// One of a list of which one is checked: the arrows go through the list and Tab leaves it. Leave
/// FocusRing::reach around it.
class SidebarItem : public QAbstractButton {
  public:
    explicit SidebarItem(SettingsPage page, QWidget* parent = nullptr);

    SettingsPage page() const { return page_; }

    /// Shows a number at the trailing edge; `description` says to assistive technology what it
    /// counts.
    void setCount(int count, const QString& description);
    /// The number as it is shown; empty when there is none.
    const QString& countText() const { return count_; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    SettingsPage page_;
    QString count_;
};

}  // namespace tessellon
