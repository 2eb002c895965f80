// A round badge with a number, for lists of things to do in order.
#pragma once

#include <QWidget>
#include <cstdint>

namespace tessellon {

enum class BadgeState : std::uint8_t { current, next, done };

/// A checkmark takes the number's place once it is done. Assistive technology passes over it: the
/// rows say their numbers themselves.
class NumberBadge : public QWidget {
  public:
    /// `size` is the badge's width in logical pixels.
    NumberBadge(int number, BadgeState state, int size, QWidget* parent = nullptr);

    void setState(BadgeState state);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int number_;
    BadgeState state_;
};

}  // namespace tessellon
