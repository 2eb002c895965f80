// What a stress run is told on its command line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace tessellon::stress {

struct Options {
    std::uint64_t seed = 1;
    std::size_t actions = 1000;
    /// The only window manager to be used; all that are installed take turns without one.
    std::optional<std::string> windowManager;
    /// Receives a line for each action as it begins, and the report.
    std::optional<std::filesystem::path> log;
};

/// Reads the arguments without the program's own name. Throws std::invalid_argument.
Options readOptions(std::span<const char* const> arguments);

}  // namespace tessellon::stress
