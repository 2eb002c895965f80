// A sentence below a control that says what did not go as it should.
#pragma once

#include "ui/text_label.h"

#include <QWidget>
#include <optional>
#include <string>

namespace tessellon {

/// Hidden while it has nothing to say.
class Note : public QWidget {
  public:
    explicit Note(QWidget* parent = nullptr);

    void setNote(const std::optional<std::string>& note);

  private:
    TextLabel* text_;
};

}  // namespace tessellon
