// Asks which applications are meant.
#pragma once

#include "base/signal.h"
#include "settings/rules_model.h"

#include <QDialog>
#include <string>
#include <vector>

namespace tessellon {

class ChoosableList;
class PillButton;
class TextField;
class TextLabel;

/// To be shown with open(); deletes itself once it is closed.
class ApplicationChooser : public QDialog {
  public:
    /// `owner` is the window that waits for the answer.
    ApplicationChooser(const std::vector<ChoosableApplication>& applications, QWidget* owner);

    /// Emitted once, when the user confirms, with the identifiers in the order of the list.
    const Signal<const std::vector<std::string>&>& chosen() const { return chosen_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* makeSearch();
    QWidget* makeButtons();
    void filter(const QString& text);
    void showChoice();
    void confirm();

    ChoosableList* list_;
    TextField* field_ = nullptr;
    TextLabel* nothing_;
    TextLabel* count_ = nullptr;
    PillButton* add_ = nullptr;
    Signal<const std::vector<std::string>&> chosen_;
    Token choiceToken_;
};

}  // namespace tessellon
