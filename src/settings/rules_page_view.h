// Which applications and windows never snap.
#pragma once

#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class RulesPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit RulesPage(const SettingsServices& services, QWidget* parent = nullptr);
};

}  // namespace tessellon
