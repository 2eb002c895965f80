// Variables of the environment, as everything here reads them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

/// The value of a variable; "" when it is not set.
std::string environment(const char* name);

/// The parts of a list that colons separate; empty ones are left out.
std::vector<std::string> colonList(std::string_view text);

}  // namespace tessellon
