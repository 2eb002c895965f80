// Variables of the environment that are set, or not, for one test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tessellon {

/// While it lives, an environment variable has this value, or is not set.
class Environment {
  public:
    Environment(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        set(value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { set(before_); }

    void set(const std::optional<std::string>& value) const {
        if (value) {
            setenv(name_, value->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }

  private:
    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace tessellon
