// The figures of the domain by itself, in words.
#include "sections.h"

#include <array>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tessellon::benchmarks {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 24> descriptions{{
    {"captureWindows/10", "capturing 10 windows"},
    {"captureWindows/30", "capturing 30 windows"},
    {"captureWindows/100", "capturing 100 windows"},
    {"captureWindows/300", "capturing 300 windows"},
    {"applyWindows/10", "applying an arrangement of 10 windows"},
    {"applyWindows/30", "applying an arrangement of 30 windows"},
    {"applyWindows/100", "applying an arrangement of 100 windows"},
    {"applyWindows/300", "applying an arrangement of 300 windows"},
    {"placeUnitInArea", "the frame of a part of the screen"},
    {"targetFrame", "the frame that an action leads to"},
    {"snapFocusedWindow/0", "a snap, no restore records before"},
    {"snapFocusedWindow/199", "a snap, 199 restore records before"},
    {"recogniseWindow/200", "recognising a window among 200 records"},
    {"listVisibleWindows/10", "listing 10 windows"},
    {"listVisibleWindows/100", "listing 100 windows"},
    {"listVisibleWindows/300", "listing 300 windows"},
    {"encodeRestoreMemory/10", "encoding 10 restore records"},
    {"encodeRestoreMemory/200", "encoding 200 restore records"},
    {"decodeRestoreMemory/10", "decoding 10 restore records"},
    {"decodeRestoreMemory/200", "decoding 200 restore records"},
    {"decodeKeymapOfAllActions", "decoding the shortcuts, all of them changed"},
    {"bindingsOfAllActions", "the bindings that come of them"},
    {"writeSettingsFile/10", "writing the settings file, 10 restore records"},
    {"writeSettingsFile/200", "writing the settings file, 200 restore records"},
}};

std::string describe(const std::string& name) {
    for (const auto& [known, description] : descriptions) {
        if (known == name) {
            return std::string(description);
        }
    }
    throw std::runtime_error("nothing describes the benchmark " + name);
}

std::string microseconds(double value) {
    constexpr double small = 10;
    return value < 1 ? number(value * 1000, 0) + " ns"
                     : number(value, value < small ? 1 : 0) + " µs";
}

double inMicroseconds(const nlohmann::json& entry) {
    const auto unit = entry.at("time_unit").get<std::string>();
    const auto time = entry.at("real_time").get<double>();
    if (unit == "us") {
        return time;
    }
    if (unit != "ns") {
        throw std::runtime_error("a benchmark in " + unit);
    }
    return time / 1000;
}

}  // namespace

void describeDomain(Report& report, const std::string& json) {
    report.section("domain", "The domain by itself");
    report.table("", {"what", "mean"});
    for (const auto& entry : nlohmann::json::parse(json).at("benchmarks")) {
        report.addCells(
            {describe(entry.at("name").get<std::string>()), microseconds(inMicroseconds(entry))});
    }
}

}  // namespace tessellon::benchmarks
