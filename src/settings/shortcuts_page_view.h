// The shortcuts of all snap actions.
#pragma once

#include "base/token.h"
#include "settings/settings_services.h"
#include "shortcuts/control_command_offer.h"

#include <QWidget>

namespace tessellon {

class ElidedLabel;
class PillButton;

class ShortcutsPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit ShortcutsPage(const SettingsServices& services, QWidget* parent = nullptr);

  private:
    void addStatus();
    void addGroups();
    void addNote();
    void addButtons();
    void follow();
    void showOffer();

    SettingsServices services_;
    ControlCommandOffer offer_;
    ElidedLabel* status_ = nullptr;
    ElidedLabel* note_ = nullptr;
    PillButton* reset_ = nullptr;
    PillButton* useControlCommand_ = nullptr;
    Token recorderChanged_;
    Token offerChanged_;
};

}  // namespace tessellon
