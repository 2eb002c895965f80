// The displays in their order, each with its own gap if the user wants one.
#pragma once

#include "settings/displays_model.h"
#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class DisplaysPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit DisplaysPage(const SettingsServices& services, QWidget* parent = nullptr);

  private:
    DisplaysModel model_;
};

}  // namespace tessellon
