// A screen reader, as far as programs can tell: the accessibility bus of a private desktop, and
// what the programs on it say about themselves. https://gitlab.gnome.org/GNOME/at-spi2-core
#pragma once

#include "harness/private_desktop.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

/// The bits of a state that the tests ask for (AtspiStateType).
enum class AccessibleState : std::uint8_t {
    checked = 4,
    enabled = 8,
    focusable = 11,
    focused = 12,
    showing = 25
};

/// One object of a program's tree, as it was when it was asked.
struct Accessible {
    std::string program;  // its name on the accessibility bus
    std::string path;
    std::string name;
    std::string role;  // "push button", "check box", …
    std::uint64_t states = 0;
    int depth = 0;

    bool is(AccessibleState state) const {
        return (states >> static_cast<unsigned>(state) & 1U) != 0;
    }
};

/// A tree as text, an object a line, for the message of a test that fails.
std::string describe(const std::vector<Accessible>& objects);

class AccessibilityBus {
  public:
    /// Starts the bus, with assistive technology turned on, for programs that start from now on.
    /// Throws std::runtime_error when it does not come.
    explicit AccessibilityBus(PrivateDesktop& desktop);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;

    /// Everything below the windows of the program of this process, in the order of its tree; empty
    /// while it has not joined the bus. What goes away meanwhile is left out.
    std::vector<Accessible> tree(pid_t process) const;
    /// The same below one object, itself included.
    std::vector<Accessible> tree(const Accessible& top) const;

    /// The first object of this role and name that the program shows; nothing when it shows none.
    std::optional<Accessible> find(pid_t process, std::string_view role,
                                   std::string_view name) const;
    /// Waits until there is one.
    std::optional<Accessible> waitFor(pid_t process, std::string_view role,
                                      std::string_view name) const;

    /// The middle of what it takes on the screen; nothing when it does not tell.
    std::optional<Position> middle(const Accessible& object) const;

    /// The number that a slider stands at; nothing when it does not tell.
    std::optional<double> value(const Accessible& object) const;
    /// False when it does not take it.
    bool setValue(const Accessible& object, double value) const;

    /// What is written in a text field, and where in it the caret stands, counted in characters;
    /// nothing for other objects.
    std::optional<std::string> text(const Accessible& object) const;
    std::optional<int> caret(const Accessible& object) const;
    /// False when it has no caret.
    bool setCaret(const Accessible& object, int offset) const;

    /// The names of what can be done with the object, such as "Press".
    std::vector<std::string> actions(const Accessible& object) const;
    /// Does the first of them, or the one of this name. False when there is none.
    bool act(const Accessible& object, std::string_view action = {}) const;

    /// Asks again for what the object says about itself; nothing when it is gone.
    std::optional<Accessible> again(const Accessible& object) const;

  private:
    struct Bus;
    std::unique_ptr<Bus> bus_;
};

}  // namespace tessellon::desktop
