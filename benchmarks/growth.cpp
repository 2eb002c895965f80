#include "growth.h"

#include "report.h"

#include <cmath>

namespace tessellon::benchmarks {

std::string growth(const std::map<std::size_t, std::vector<Milliseconds>>& times) {
    const auto& [fewest, shortest] = *times.begin();
    const auto& [most, longest] = *times.rbegin();
    const auto few = static_cast<double>(fewest);
    const auto many = static_cast<double>(most);
    const double exponent = std::log(median(longest) / median(shortest)) / std::log(many / few);
    const double each = (median(longest) - median(shortest)).count() * 1000 / (many - few);
    return "each further window costs " + number(each, each < 10 ? 1 : 0) +
           " µs; ten times as many windows take " + number(std::pow(10, exponent), 1) +
           " × as long";
}

}  // namespace tessellon::benchmarks
