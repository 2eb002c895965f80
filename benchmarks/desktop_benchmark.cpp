// Times the program and its adapters on private desktops, beside other tools that move windows, and
// prints one report.
//
// Usage: desktop_benchmark [FILE]
// Also writes the report to FILE. The environment variable TESSELLON_BENCHMARK picks one section by
// name: press, listing, tiling, drag, process or interface.
#include "client_windows.h"
#include "report.h"
#include "sections.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>
#include <string_view>

namespace {

using namespace tessellon::benchmarks;

struct Section {
    std::string_view name;
    void (*measure)(Report&);
};
constexpr std::array<Section, 7> sections{{
    {"press", measurePressToSettled},
    {"listing", measureListing},
    {"tiling", measureTiling},
    {"drag", measureDragPanels},
    {"windows", measureOwnWindows},
    {"process", measureProcessCosts},
    {"interface", measureInterface},
}};

int run(std::span<char* const> arguments) {
    const char* const chosen = std::getenv("TESSELLON_BENCHMARK");
    Report report;
    for (const Section& section : sections) {
        if (chosen == nullptr || section.name == chosen) {
            std::cerr << "measuring: " << section.name << "...\n";
            section.measure(report);
        }
    }
    const std::string table = report.markdown();
    std::cout << table;
    if (arguments.size() > 1) {
        std::ofstream file(arguments[1]);
        file << table;
        file.close();
        if (!file) {
            std::cerr << "cannot write " << arguments[1] << '\n';
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
    // Started by this program itself, for the windows of a crowded desktop.
    if (arguments.size() == 3 && std::string_view(arguments[1]) == "--show-windows") {
        return showWindows(std::atoi(arguments[2]));
    }
    try {
        return run(arguments);
    } catch (const std::exception& error) {
        std::cerr << "desktop_benchmark: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
