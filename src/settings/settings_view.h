// What the settings window holds: the sidebar and the page that is selected.
#pragma once

#include "base/token.h"
#include "settings/settings_page.h"
#include "settings/settings_services.h"

#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>

namespace tessellon {

class SettingsSidebar;

class SettingsView : public QWidget {
  public:
    using Page = SettingsPage;

    /// In logical pixels.
    static constexpr QSize contentSize{900, 720};
    static constexpr int sidebarWidth = 236;

    /// What `services` names must outlive the view.
    explicit SettingsView(const SettingsServices& services, Page page = Page::general,
                          QWidget* parent = nullptr);

    Page page() const { return page_; }
    /// Builds the page anew and shows it from its top.
    void setPage(Page page);

    QSize sizeHint() const override { return contentSize; }

  private:
    QWidget* makePage();
    void addStepShortcuts();

    SettingsServices services_;
    Page page_;
    SettingsSidebar* sidebar_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QVBoxLayout* sheet_ = nullptr;
    QWidget* pageWidget_ = nullptr;
    Token chosen_;
    Token selected_;
};

}  // namespace tessellon
