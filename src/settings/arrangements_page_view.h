// The saved arrangements: saving, naming, binding, applying and deleting them.
#pragma once

#include "base/token.h"
#include "settings/arrangements_model.h"
#include "settings/settings_services.h"

#include <QVBoxLayout>
#include <QWidget>
#include <optional>
#include <vector>

namespace tessellon {

class ArrangementRow;
class Card;
class ElidedLabel;
class PillButton;
class SectionTitle;

class ArrangementsPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit ArrangementsPage(const SettingsServices& services, QWidget* parent = nullptr);

  private:
    void addSaveCard();
    void addEmptyCard();
    void follow();
    void followList();
    void followRecorder();
    /// Where the focus goes when its row goes: to the same control of a neighbor.
    void passFocusOn(const std::vector<ArrangementRow*>& before,
                     const std::vector<ArrangementRow*>& gone) const;
    void orderTabs();

    ArrangementsModel model_;
    Recorder& recorder_;
    ElidedLabel* message_ = nullptr;
    PillButton* save_ = nullptr;
    SectionTitle* saved_ = nullptr;
    Card* empty_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<ArrangementRow*> rows_;
    /// The one whose keys were recorded last.
    std::optional<Uuid> recorded_;
    Token changed_;
    Token recorderChanged_;
};

}  // namespace tessellon
