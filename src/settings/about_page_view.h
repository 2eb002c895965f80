// The program itself: its version, the tour, and updates.
#pragma once

#include "base/token.h"
#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class AboutPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit AboutPage(const SettingsServices& services, QWidget* parent = nullptr);

  private:
    QWidget* makeButtons(const SettingsServices& services);
    QWidget* makeUpdatesRow(Updater& updater);

    Token updaterChanged_;
};

}  // namespace tessellon
