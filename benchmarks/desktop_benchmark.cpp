// Times the program and its adapters on private desktops, beside other tools that move windows, and
// writes one report.
//
// Usage: desktop_benchmark [--domain FILE] [--template FILE --document FILE] [SECTION...]
// Prints the report of the sections that are named, or of all of them. --domain names what
// domain_benchmark has measured; --document is the template with the report filled in.
#include "client_windows.h"
#include "document.h"
#include "report.h"
#include "sections.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace tessellon::benchmarks;

struct Section {
    std::string_view name;
    void (*measure)(Report&);
};
constexpr std::array<Section, 8> sections{{
    {"press", measurePressToSettled},
    {"tiling", measureTiling},
    {"listing", measureListing},
    {"arrangements", measureArrangements},
    {"drag", measureDragPanels},
    {"windows", measureOwnWindows},
    {"interface", measureInterface},
    {"process", measureProcessCosts},
}};

struct Request {
    std::map<std::string, std::string> files;
    std::set<std::string, std::less<>> sections;

    bool wants(std::string_view section) const {
        return sections.empty() || sections.contains(section);
    }
};

Request requestOf(std::span<char* const> arguments) {
    Request request;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string argument = arguments[i];
        if (argument == "--domain" || argument == "--template" || argument == "--document") {
            if (++i == arguments.size()) {
                throw std::runtime_error(argument + " needs a file");
            }
            request.files[argument] = arguments[i];
        } else if (argument == "domain" ||
                   std::any_of(sections.begin(), sections.end(),
                               [&](const Section& section) { return section.name == argument; })) {
            request.sections.insert(argument);
        } else {
            throw std::runtime_error("there is no section " + argument);
        }
    }
    return request;
}

std::string contentsOf(const std::string& file) {
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("cannot read " + file);
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const std::string& file, const std::string& text) {
    std::ofstream stream(file);
    stream << text;
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write " + file);
    }
}

/// Adds a section, at the second attempt at the latest: window managers and programs of others do
/// not always do what they are told. What could not be measured costs nothing of the rest.
bool measure(const Section& section, Report& report) {
    constexpr int attempts = 2;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        std::cerr << "measuring: " << section.name << "...\n";
        Report longer = report;
        try {
            section.measure(longer);
            report = std::move(longer);
            return true;
        } catch (const std::exception& error) {
            std::cerr << "desktop_benchmark: " << section.name << ": " << error.what() << '\n';
        }
    }
    return false;
}

void run(const Request& request) {
    const std::string ranOn = machine();
    Report report;
    std::string missing;
    for (const Section& section : sections) {
        if (request.wants(section.name) && !measure(section, report)) {
            missing += " " + std::string(section.name);
        }
    }
    if (request.files.contains("--domain")) {
        describeDomain(report, contentsOf(request.files.at("--domain")));
    }
    std::cout << report.markdown();
    if (!missing.empty()) {
        throw std::runtime_error("could not be measured:" + missing);
    }
    if (request.files.contains("--document")) {
        auto values = report.sections();
        values["budgets"] = report.budgets();
        values["date"] = today();
        values["machine"] = ranOn;
        write(request.files.at("--document"),
              filled(contentsOf(request.files.at("--template")), values));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
    // Started by this program itself, for the windows of a crowded desktop.
    if (arguments.size() == 3 && std::string_view(arguments[1]) == "--show-windows") {
        return showWindows(std::atoi(arguments[2]));
    }
    try {
        run(requestOf(arguments.subspan(1)));
    } catch (const std::exception& error) {
        std::cerr << "desktop_benchmark: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
