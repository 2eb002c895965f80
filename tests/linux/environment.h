// Variables of the environment that are set for one test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tessellon {

/// Sets an environment variable until the end of the test.
class Environment {
  public:
    Environment(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        setenv(name, value.c_str(), 1);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() {
        if (before_) {
            setenv(name_, before_->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }

  private:
    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace tessellon
