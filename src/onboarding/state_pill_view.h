// A capsule that names the state of a task or of the permission, with a sign before it.
#pragma once

#include "ui/symbols.h"

#include <QColor>
#include <QLabel>
#include <QString>
#include <cstdint>
#include <optional>

namespace tessellon {

/// What a pill says. Without a symbol it has a dot.
struct PillState {
    QString text;
    QColor color;
    std::optional<Symbol> symbol;
};

/// Small pills stand in a row, regular ones beside a button.
enum class StatePillSize : std::uint8_t { regular, small };

/// To assistive technology it is its text.
class StatePill : public QLabel {
  public:
    StatePill(const PillState& state, StatePillSize size, QWidget* parent = nullptr);

    void setState(const PillState& state);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    StatePillSize size_;
    QColor color_;
    std::optional<Symbol> symbol_;
};

}  // namespace tessellon
