// A real pointer on a private server: moved in steps, pressed and released as a hand would.
#pragma once

#include "harness/x_session.h"

#include <cstdint>

namespace tessellon::desktop {

enum class Button : std::uint8_t { left = 1, middle = 2, right = 3 };

/// A place on the X screen, in pixels from its top left.
struct Position {
    int x = 0;
    int y = 0;
    bool operator==(const Position&) const = default;
};

class Pointer {
  public:
    explicit Pointer(XSession& session) : x_(session) {}

    /// Puts the pointer there in one motion.
    void jumpTo(Position target);

    /// Moves it there in steps, each of which the server has told everybody before the next.
    void moveTo(Position target);

    void press(Button button = Button::left);
    void release(Button button = Button::left);
    void click(Button button = Button::left);

    Position position();
    bool isDown(Button button);

    /// Whether nobody holds the pointer: asks by taking it for a moment.
    bool isFree();

  private:
    void fake(std::uint8_t type, std::uint8_t detail, Position at);

    XSession& x_;
};

}  // namespace tessellon::desktop
