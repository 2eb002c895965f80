#include "outcomes.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace tessellon::desktop {

namespace fs = std::filesystem;

fs::path Outcomes::file(const Cell& cell) const {
    return folder_ / cell.windowManager /
           (std::string(textOf(cell.row).id) + "." + std::string(textOf(cell.subject).id));
}

void Outcomes::write(const Cell& cell, std::string_view outcome) const {
    const fs::path path = file(cell);
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << outcome;
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void Outcomes::forget(const Cell& cell) const {
    std::error_code absent;
    fs::remove(file(cell), absent);
}

std::optional<std::string> Outcomes::read(const Cell& cell, const fs::path& newerThan) const {
    const fs::path path = file(cell);
    std::error_code absent;
    const auto written = fs::last_write_time(path, absent);
    if (absent || written < fs::last_write_time(newerThan)) {
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace tessellon::desktop
