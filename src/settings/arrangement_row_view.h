// One saved arrangement: its name, what it holds, its shortcut, and what can be done with it.
#pragma once

#include "arrangements/arrangement.h"
#include "settings/arrangements_model.h"
#include "shortcuts/recorder.h"
#include "ui/card.h"
#include "ui/text_field.h"

#include <QString>
#include <QVBoxLayout>
#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace tessellon {

class ElidedLabel;
class PillButton;
class ShortcutRecorder;

class ArrangementRow : public Card {
  public:
    /// For the arrangement with this id; model and recorder must outlive the row.
    ArrangementRow(ArrangementsModel& model, Recorder& recorder, const Uuid& id,
                   QWidget* parent = nullptr);

    const Uuid& id() const { return shown_.id; }

    /// Shows the arrangement at `index` of the model's list, which has this row's id. The name is
    /// left alone unless it is another one than the field has; if so, caret and selection stay as
    /// near to where they were as they can.
    void showArrangement(std::size_t index);

    /// Shows a line about the latest recording of its keys, or none.
    void showNote(const std::optional<std::string>& note);

    /// The controls, in the order in which Tab visits them.
    std::array<QWidget*, 4> controls() const;

    /// Whether the arrangement was last deleted with the pointer.
    Qt::FocusReason deletedBy() const { return deletedBy_; }

  private:
    void showName(const QString& name);

    ArrangementsModel& model_;
    Arrangement shown_;
    QString name_;
    TextField* field_;
    ElidedLabel* summary_;
    ElidedLabel* note_ = nullptr;
    ShortcutRecorder* recorder_;
    PillButton* apply_;
    PillButton* delete_;
    QVBoxLayout* texts_;
    Qt::FocusReason deletedBy_ = Qt::OtherFocusReason;
};

}  // namespace tessellon
