#include "report.h"

#include <iomanip>
#include <sstream>
#include <utility>

namespace tessellon::benchmarks {

void Report::section(std::string heading) {
    sections_.push_back({std::move(heading), {}, {}});
}

void Report::add(Row row) {
    sections_.back().rows.push_back(std::move(row));
}

void Report::note(std::string text) {
    sections_.back().notes.push_back(std::move(text));
}

std::string Report::markdown() const {
    std::ostringstream out;
    for (const Section& section : sections_) {
        out << "\n### " << section.heading << "\n\n"
            << "| what | median | 95 % | ratio | budget | |\n|---|---|---|---|---|---|\n";
        for (const Row& row : section.rows) {
            out << "| " << row.what << " | " << row.median << " | " << row.percentile95 << " | "
                << row.ratio << " | " << (row.budget ? row.budget->text : "") << " | "
                << (row.budget ? (row.budget->met ? "met" : "not met") : "") << " |\n";
        }
        for (const std::string& note : section.notes) {
            out << "\n" << note << "\n";
        }
    }
    return out.str();
}

std::string number(double value, int decimals) {
    std::ostringstream out;
    out << std::fixed << std::setprecision(decimals) << value;
    return out.str();
}

std::string text(Milliseconds time) {
    constexpr double smallest = 0.1;
    return number(time.count(), time.count() < smallest ? 3 : 2) + " ms";
}

Row timeRow(std::string what, const std::vector<Milliseconds>& samples, std::string ratio,
            std::optional<Budget> budget) {
    return {std::move(what), text(median(samples)), text(percentile(samples, 0.95)),
            std::move(ratio), std::move(budget)};
}

}  // namespace tessellon::benchmarks
