// The saved arrangements: saving, naming, binding, applying and deleting them.
#pragma once

#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class ArrangementsPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit ArrangementsPage(const SettingsServices& services, QWidget* parent = nullptr);
};

}  // namespace tessellon
