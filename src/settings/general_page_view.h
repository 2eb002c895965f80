// How the program snaps, the gaps, and tiling.
#pragma once

#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class GeneralPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit GeneralPage(const SettingsServices& services, QWidget* parent = nullptr);
};

}  // namespace tessellon
