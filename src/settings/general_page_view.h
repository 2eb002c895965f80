// How the program snaps, the gaps, and tiling.
#pragma once

#include "base/token.h"
#include "settings/launch_at_login.h"
#include "settings/settings_services.h"

#include <QWidget>

namespace tessellon {

class Card;
class GapPreview;
class LinkButton;
class PillToggle;
class Row;
class TextLabel;

class GeneralPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit GeneralPage(const SettingsServices& services, QWidget* parent = nullptr);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    Card* makeSnapping();
    Row* makeLoginRow();
    Card* makeGaps();
    Card* makeTiling();
    void showLogin();
    /// Below the row, and with what assistive technology says of its switch; empty: none.
    void showLoginError(const QString& error);
    void showGaps();
    void showTiling();

    UserDefaults& defaults_;
    LoginItem& loginItem_;
    LaunchAtLogin login_;
    Row* loginRow_ = nullptr;
    PillToggle* loginToggle_ = nullptr;
    LinkButton* openLoginItems_ = nullptr;
    TextLabel* loginError_ = nullptr;
    GapPreview* preview_ = nullptr;
    /// What is there only while tiling is on.
    QWidget* tilingSliders_ = nullptr;
    Token loginChanged_;
    Token settingsChanged_;
};

}  // namespace tessellon
