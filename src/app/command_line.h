// The program's command line.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tessellon {

struct CommandLine {
    enum class Request { run, help, version, mistake };
    Request request = Request::run;
    /// What is wrong and what to do, for Request::mistake.
    std::string mistake;
};

/// Reads the arguments without the program's own name.
CommandLine parseCommandLine(std::span<const char* const> arguments);

/// The text of --help.
std::string_view helpText();

}  // namespace tessellon
