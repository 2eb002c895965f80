// The shortcuts of all snap actions.
#pragma once

#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class ShortcutsPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit ShortcutsPage(const SettingsServices& services, QWidget* parent = nullptr);
};

}  // namespace tessellon
