#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tessellon::benchmarks {
namespace {

const std::vector<std::string> rowColumns{"what", "median", "95 %", "ratio", "budget", ""};

/// Without those that no row has anything in.
std::vector<std::size_t> usedColumns(const std::vector<std::string>& columns,
                                     const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> used;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (std::any_of(rows.begin(), rows.end(),
                        [i](const auto& row) { return !row.at(i).empty(); })) {
            used.push_back(i);
        }
    }
    return used;
}

void writeRow(std::ostream& out, const std::vector<std::string>& cells,
              const std::vector<std::size_t>& columns) {
    out << '|';
    for (const std::size_t column : columns) {
        out << ' ' << cells.at(column) << " |";
    }
    out << '\n';
}

void writeTable(std::ostream& out, const std::vector<std::string>& columns,
                const std::vector<std::vector<std::string>>& rows) {
    const auto used = usedColumns(columns, rows);
    writeRow(out, columns, used);
    out << '|';
    for (std::size_t i = 0; i < used.size(); ++i) {
        out << "---|";
    }
    out << '\n';
    for (const auto& row : rows) {
        writeRow(out, row, used);
    }
}

}  // namespace

void Report::section(std::string key, std::string title) {
    sections_.push_back({std::move(key), std::move(title), {}});
}

void Report::table(std::string heading, std::vector<std::string> columns) {
    sections_.back().tables.push_back({std::move(heading), std::move(columns), {}, {}});
}

void Report::table(std::string heading) {
    table(std::move(heading), rowColumns);
}

void Report::addCells(std::vector<std::string> cells) {
    auto& table = sections_.back().tables.back();
    if (cells.size() != table.columns.size()) {
        throw std::logic_error("a row of \"" + table.heading + "\" does not fit");
    }
    table.rows.push_back(std::move(cells));
}

void Report::add(Row row) {
    addCells({row.what, row.median, row.percentile95, row.ratio, row.budget ? row.budget->text : "",
              row.budget ? verdict(row.budget->met) : ""});
    if (row.budget) {
        judge(std::move(row.what), row.ratio.empty() ? row.median : row.ratio,
              *std::move(row.budget));
    }
}

void Report::note(std::string text) {
    sections_.back().tables.back().notes.push_back(std::move(text));
}

void Report::judge(std::string what, std::string measured, Budget budget) {
    verdicts_.push_back(
        {sections_.back().title, std::move(what), std::move(measured), std::move(budget)});
}

std::string Report::markdown(const Table& table) {
    std::ostringstream out;
    if (!table.heading.empty()) {
        out << "### " << table.heading << "\n\n";
    }
    writeTable(out, table.columns, table.rows);
    for (const std::string& note : table.notes) {
        out << '\n' << note << '\n';
    }
    return out.str();
}

std::string Report::markdown(const Section& section) {
    std::string result;
    for (const Table& table : section.tables) {
        result += (result.empty() ? "" : "\n") + markdown(table);
    }
    return result;
}

std::map<std::string, std::string> Report::sections() const {
    std::map<std::string, std::string> result;
    for (const Section& section : sections_) {
        result[section.key] = markdown(section);
    }
    return result;
}

std::string Report::budgets() const {
    std::vector<std::vector<std::string>> rows;
    std::string reasons;
    for (const auto& [section, what, measured, budget] : verdicts_) {
        rows.push_back({section, what, measured, budget.text, verdict(budget.met)});
        if (!budget.met) {
            reasons += "- **" + section + ", " + what + ":** " +
                       (budget.reason.empty() ? "no reason is known." : budget.reason) + "\n";
        }
    }
    std::ostringstream out;
    writeTable(out, {"", "what", "measured", "budget", ""}, rows);
    out << '\n'
        << (reasons.empty() ? "All budgets are met.\n" : "Why some are not met:\n\n" + reasons);
    return out.str();
}

std::string Report::markdown() const {
    std::string result;
    for (const Section& section : sections_) {
        result += "\n## " + section.title + "\n\n" + markdown(section);
    }
    return result + (verdicts_.empty() ? "" : "\n## Budgets\n\n" + budgets());
}

std::string number(double value, int decimals) {
    std::ostringstream out;
    out << std::fixed << std::setprecision(decimals) << value;
    return out.str();
}

std::string text(Milliseconds time) {
    constexpr double smallest = 0.1;
    constexpr double large = 100;
    const double count = time.count();
    return number(count, count < smallest ? 3 : count < large ? 2 : 0) + " ms";
}

std::string spread(const std::vector<Milliseconds>& samples) {
    const std::string most = text(percentile(samples, 0.95));
    return text(median(samples)) + " (" + most.substr(0, most.find(' ')) + ")";
}

std::string verdict(bool met) {
    return met ? "met" : "not met";
}

Row timeRow(std::string what, const std::vector<Milliseconds>& samples, std::string ratio,
            std::optional<Budget> budget) {
    return {std::move(what), text(median(samples)), text(percentile(samples, 0.95)),
            std::move(ratio), std::move(budget)};
}

Budget atMost(Milliseconds most, const std::vector<Milliseconds>& samples, std::string reason) {
    return {"≤ " + number(most.count(), most.count() == std::floor(most.count()) ? 0 : 1) + " ms",
            median(samples) <= most, std::move(reason)};
}

}  // namespace tessellon::benchmarks
