// What the window of the updates holds.
#pragma once

#include "base/token.h"
#include "updates/update_model.h"

#include <QString>
#include <QUrl>
#include <QWidget>
#include <functional>

class QHBoxLayout;
class QPlainTextEdit;

namespace tessellon {

class PillButton;
class PillToggle;
class TextLabel;

/// What a check has found out, of a fixed width and as high as that needs.
class UpdateView : public QWidget {
  public:
    /// Opens an address in the user's browser; false when that did not work.
    using OpenPage = std::function<bool(const QUrl&)>;

    /// The model must outlive the view.
    UpdateView(UpdateModel& model, OpenPage openPage, QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QHBoxLayout* makeWords();
    QWidget* makeNotes();
    QHBoxLayout* makeChoice();
    QHBoxLayout* makeButtons();
    void refresh();
    void refreshChoice();
    /// Gives the keyboard to the button that goes on, else to the one that closes.
    void focusPrimary();
    void showNotes(const QString& notes);
    void openPage();

    UpdateModel& model_;
    OpenPage openPage_;
    TextLabel* headline_ = nullptr;
    TextLabel* text_ = nullptr;
    QWidget* notesCard_ = nullptr;
    QPlainTextEdit* notes_ = nullptr;
    TextLabel* choiceLabel_ = nullptr;
    PillToggle* choice_ = nullptr;
    PillButton* close_ = nullptr;
    PillButton* tryAgain_ = nullptr;
    PillButton* open_ = nullptr;
    Token changed_;
    Token choiceChanged_;
};

}  // namespace tessellon
