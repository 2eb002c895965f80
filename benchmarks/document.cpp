#include "document.h"

#include "report.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <set>
#include <stdexcept>
#include <thread>

#include <stdlib.h>

namespace tessellon::benchmarks {

std::string filled(const std::string& text, const std::map<std::string, std::string>& values) {
    constexpr std::string_view opening = "{{";
    constexpr std::string_view closing = "}}";
    std::string result;
    std::set<std::string> used;
    std::size_t at = 0;
    while (true) {
        const auto start = text.find(opening, at);
        result += text.substr(at, start - at);
        if (start == std::string::npos) {
            break;
        }
        const auto end = text.find(closing, start);
        const auto name = text.substr(start + opening.size(), end - start - opening.size());
        const auto value = values.find(name);
        if (end == std::string::npos || value == values.end()) {
            throw std::runtime_error("the document has a place for \"" + name +
                                     "\", which was not measured");
        }
        used.insert(name);
        // What is filled in ends its line, and so does the place.
        std::string_view filling = value->second;
        while (filling.ends_with('\n')) {
            filling.remove_suffix(1);
        }
        result += filling;
        at = end + closing.size();
    }
    for (const auto& entry : values) {
        if (!used.contains(entry.first)) {
            throw std::runtime_error("the document has no place for \"" + entry.first + "\"");
        }
    }
    return result;
}

std::string today() {
    constexpr std::array months{"January",   "February", "March",    "April",
                                "May",       "June",     "July",     "August",
                                "September", "October",  "November", "December"};
    const std::chrono::year_month_day date(
        std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
    return std::to_string(static_cast<unsigned>(date.day())) + " " +
           months.at(static_cast<unsigned>(date.month()) - 1) + " " +
           std::to_string(static_cast<int>(date.year()));
}

std::string machine() {
    constexpr double busy = 0.5;
    const auto processors = std::thread::hardware_concurrency();
    double load = 0;
    const bool known = getloadavg(&load, 1) == 1;
    return std::to_string(processors) + (processors == 1 ? " processor" : " processors") +
           (known && load > busy ? ", which had other work (load " + number(load, 1) + ")" : "");
}

}  // namespace tessellon::benchmarks
