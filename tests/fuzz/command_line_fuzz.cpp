// Any words as the arguments of the program.
#include "app/command_line.h"
#include "fuzz/expect.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    std::string words(reinterpret_cast<const char*>(data), size);
    std::vector<const char*> arguments;
    for (std::size_t start = 0; start < words.size();) {
        arguments.push_back(words.c_str() + start);
        start = std::min(words.find('\0', start), words.size()) + 1;
    }
    const auto commandLine = parseCommandLine(arguments);
    expect((commandLine.request == CommandLine::Request::mistake) == !commandLine.mistake.empty());
    expect((commandLine.request == CommandLine::Request::run) == arguments.empty());
    return 0;
}
