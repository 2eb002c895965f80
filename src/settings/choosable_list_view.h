// A list of applications in which several can be chosen.
#pragma once

#include "base/signal.h"
#include "settings/rules_model.h"

#include <QListView>
#include <memory>
#include <string>
#include <vector>

namespace tessellon {

/// Every line has a check mark, an icon and a name; those that are ignored already say so and
/// cannot be chosen. The arrow keys go through the lines and Space chooses, as a click does.
class ChoosableList : public QListView {
  public:
    explicit ChoosableList(const std::vector<ChoosableApplication>& applications,
                           QWidget* parent = nullptr);
    ~ChoosableList() override;

    /// Shows only those whose name or identifier contains the text, in any letter case; the others
    /// stay chosen if they are.
    void setFilter(const QString& text);
    /// How many lines there are to be seen.
    int lineCount() const;

    /// The identifiers of those that are chosen, in the order of the whole list.
    std::vector<std::string> chosen() const;
    /// Chooses the line that the keyboard is at; nothing happens where that cannot be.
    void chooseCurrent();
    /// Emitted after one was chosen or is no more.
    const Signal<>& choiceChanged() const { return choiceChanged_; }

  protected:
    void focusInEvent(QFocusEvent* event) override;

  private:
    class Model;

    void goToFirst();

    std::unique_ptr<Model> model_;
    Signal<> choiceChanged_;
};

}  // namespace tessellon
