// Which applications and windows never snap.
#pragma once

#include "base/token.h"
#include "settings/rules_model.h"
#include "settings/settings_services.h"

#include <QPointer>
#include <QWidget>

namespace tessellon {

class ApplicationChooser;
class IgnoredList;
class SectionTitle;
class TextField;
class TextLabel;

class RulesPage : public QWidget {
  public:
    /// Shows everything as it is now, and follows the list; what `services` names must outlive the
    /// page.
    explicit RulesPage(const SettingsServices& services, QWidget* parent = nullptr);
    RulesPage(const RulesPage&) = delete;
    RulesPage& operator=(const RulesPage&) = delete;
    ~RulesPage() override;

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    QWidget* makeAddRow();
    QWidget* makeTip();
    void refresh();
    /// Adds what the field names; with nothing in it, asks for applications.
    void add();
    void choose();

    RulesModel model_;
    SectionTitle* heading_;
    IgnoredList* list_;
    TextLabel* nothing_;
    TextField* field_ = nullptr;
    TextLabel* error_;
    QPointer<ApplicationChooser> chooser_;
    Token modelToken_;
    Token removalToken_;
    Token choiceToken_;
};

}  // namespace tessellon
