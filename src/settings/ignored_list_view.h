// The applications that never snap, as a row of pills.
#pragma once

#include "base/signal.h"
#include "settings/rules_model.h"

#include <QBasicTimer>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

class IgnoredPill;

/// One pill for each application, placed like words; each can be removed. No pill is wider than the
/// list.
class IgnoredList : public QWidget {
  public:
    explicit IgnoredList(QWidget* parent = nullptr);

    /// Shows these. A pill that stays keeps the keyboard if it has it; one that goes passes it on
    /// to its neighbour, the last one to the control that follows.
    void setEntries(const std::vector<IgnoredApplication>& entries);

    /// The control that comes after the pills in the order of the Tab key; must outlive the list.
    void setNextControl(QWidget& control) { next_ = &control; }

    /// Emitted with the identifier of the application that the user wants to be removed.
    const Signal<std::string>& removed() const { return removed_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    /// Once what is due has been drawn, and a few at a time.
    void findIconsSoon();
    void bound(IgnoredPill& pill) const;
    void orderTabs() const;
    int focusedPill() const;

    std::vector<IgnoredPill*> pills_;
    QWidget* next_ = nullptr;
    /// The width for the pills; nothing before the list has been laid out.
    std::optional<int> room_;
    QBasicTimer search_;
    Signal<std::string> removed_;
};

}  // namespace tessellon
