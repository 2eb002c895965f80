#include "stress/options.h"

#include <charconv>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace tessellon::stress {
namespace {

std::uint64_t readNumber(std::string_view text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc{} || result.ptr != end) {
        throw std::invalid_argument("not a number: " + std::string(text));
    }
    return number;
}

}  // namespace

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const std::string_view name = arguments[i];
        if (i + 1 == arguments.size()) {
            throw std::invalid_argument("no value for " + std::string(name));
        }
        const std::string_view value = arguments[i + 1];
        if (name == "--seed") {
            options.seed = readNumber(value);
        } else if (name == "--actions") {
            options.actions = readNumber(value);
        } else if (name == "--window-manager") {
            options.windowManager = value;
        } else if (name == "--log") {
            options.log = value;
        } else {
            throw std::invalid_argument("unknown option: " + std::string(name));
        }
    }
    return options;
}

}  // namespace tessellon::stress
