// What the settings window holds: the sidebar and the page that is selected.
#pragma once

#include "base/token.h"
#include "settings/settings_page.h"
#include "settings/settings_services.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tessellon {

class PageScroll;
class SettingsSidebar;

/// A recording of a shortcut goes on while the pages change; it ends with the window.
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
    /// Shows the page from its top; one that is shown already stays as it is.
    void setPage(Page page);

    QSize sizeHint() const override { return contentSize; }

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QWidget* makePage();
    void rebuildPage();
    void addStepShortcuts();

    SettingsServices services_;
    Page page_;
    SettingsSidebar* sidebar_ = nullptr;
    PageScroll* scroll_ = nullptr;
    QVBoxLayout* sheet_ = nullptr;
    QWidget* pageWidget_ = nullptr;
    /// The window was closed since the page was built.
    bool isStale_ = false;
    Token chosen_;
    Token selected_;
};

}  // namespace tessellon
