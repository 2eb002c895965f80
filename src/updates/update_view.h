// The window of the updates as it is drawn.
#pragma once

#include "ui/pill_button.h"
#include "ui/pill_toggle.h"
#include "updates/update_model.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QUrl>
#include <QWidget>
#include <functional>

namespace tessellon {

/// A window that the window manager manages, of a fixed width and as high as its content.
class UpdateView : public QWidget {
  public:
    /// Opens an address in the user's browser; false when that did not work.
    using OpenPage = std::function<bool(const QUrl&)>;

    /// The model must exist until detach() has been called.
    UpdateView(UpdateModel& model, OpenPage openPage);

    /// The model is not used any more from here on.
    void detach();

    void bringToFront();
    void showQuietly();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void center();
    void makeContent();
    void refresh();
    void refreshChoice();
    void showNotes(const QString& notes);
    void openPage();

    UpdateModel* model_;
    OpenPage openPage_;
    QLabel* headline_ = nullptr;
    QLabel* text_ = nullptr;
    QWidget* notesCard_ = nullptr;
    QPlainTextEdit* notes_ = nullptr;
    QLabel* choiceLabel_ = nullptr;
    PillToggle* choice_ = nullptr;
    PillButton* tryAgain_ = nullptr;
    PillButton* open_ = nullptr;
    PillButton* close_ = nullptr;
    Token changed_;
    Token choiceChanged_;
};

}  // namespace tessellon
