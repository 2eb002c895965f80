// Named announcements between parts of the program that do not know each other. One instance,
// owned by the application, is handed to everyone who posts or observes.
#pragma once

#include "base/signal.h"
#include "base/token.h"

#include <any>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tessellon {

class NotificationCenter {
  public:
    /// What comes along with a notification; empty when it carries nothing.
    using Object = std::any;
    using Observer = std::function<void(const Object&)>;

    /// Calls `observer` for every later post under `name` until the token is dropped.
    Token observe(std::string_view name, Observer observer);

    /// Calls the observers of `name` in the order they registered, before it returns.
    void post(std::string_view name, const Object& object = {}) const;

  private:
    std::map<std::string, Signal<const Object&>, std::less<>> signals_;
};

}  // namespace tessellon
