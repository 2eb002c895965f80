// A panel that shows status notifier items, as far as the items can tell: the list on the session
// bus and one host. It draws nothing, says what is on the list, and presses it.
// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/
#pragma once

#include "harness/process.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::desktop {

class StatusNotifierHost {
  public:
    /// Takes the list's name on the session bus that the environment names. It is gone with this
    /// object, as when a panel crashes. Throws std::runtime_error when the bus refuses.
    explicit StatusNotifierHost(const Environment& environment);
    ~StatusNotifierHost();
    StatusNotifierHost(const StatusNotifierHost&) = delete;
    StatusNotifierHost& operator=(const StatusNotifierHost&) = delete;

    /// The names on the bus of the items on the list, in the order they came.
    std::vector<std::string> items() const;

    /// A property of an item that is a text; nothing when it has none, or does not answer.
    std::optional<std::string> text(const std::string& item, const std::string& property) const;
    /// The sizes of the pictures that an item brings along.
    std::vector<int> pixmapSizes(const std::string& item) const;

    /// Presses an item with the left, the middle or the right button, as at x, y of the screen.
    /// False when it does not answer.
    bool activate(const std::string& item, int x, int y) const;
    bool secondaryActivate(const std::string& item, int x, int y) const;
    bool contextMenu(const std::string& item, int x, int y) const;

  private:
    struct Bus;
    std::unique_ptr<Bus> bus_;
};

}  // namespace tessellon::desktop
