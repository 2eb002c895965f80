// What a run of the benchmark ends in: tables with remarks, one section for each topic, and beside
// every budget what was measured.
#pragma once

#include "statistics.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::benchmarks {

/// The most (or least) that a value should be, and whether it is.
struct Budget {
    std::string text;
    bool met = false;
    /// Why it is not met; with figures of the same run.
    std::string reason;
};

struct Row {
    std::string what;
    std::string median;
    std::string percentile95;
    /// How it compares with something measured in the same run.
    std::string ratio;
    std::optional<Budget> budget;
};

class Report {
  public:
    /// Starts a section; what follows belongs to it. The key stands for it in the document, the
    /// title in the list of budgets.
    void section(std::string key, std::string title);

    /// Starts a table of these columns. Columns that stay empty are left out.
    void table(std::string heading, std::vector<std::string> columns);
    void addCells(std::vector<std::string> cells);

    /// Starts a table of rows, and adds to it. A row's budget goes into the list of budgets, too.
    void table(std::string heading);
    void add(Row row);

    /// A remark below the table.
    void note(std::string text);

    /// Puts a budget into the list that no single row stands for.
    void judge(std::string what, std::string measured, Budget budget);

    /// What belongs to each section, by its key, as Markdown.
    std::map<std::string, std::string> sections() const;

    /// The list of budgets, and below it the reasons of those that are not met.
    std::string budgets() const;

    /// Everything.
    std::string markdown() const;

  private:
    struct Table {
        std::string heading;
        std::vector<std::string> columns;
        std::vector<std::vector<std::string>> rows;
        std::vector<std::string> notes;
    };
    struct Section {
        std::string key;
        std::string title;
        std::vector<Table> tables;
    };
    struct Verdict {
        std::string section;
        std::string what;
        std::string measured;
        Budget budget;
    };

    static std::string markdown(const Table& table);
    static std::string markdown(const Section& section);

    std::vector<Section> sections_;
    std::vector<Verdict> verdicts_;
};

/// "1.23" with as many decimals as asked for.
std::string number(double value, int decimals = 2);

/// "1.23 ms".
std::string text(Milliseconds time);

/// "1.23 ms (1.45)": the median, and the value that 95 % stay below.
std::string spread(const std::vector<Milliseconds>& samples);

/// "met" or "not met".
std::string verdict(bool met);

/// A row for a list of times.
Row timeRow(std::string what, const std::vector<Milliseconds>& samples, std::string ratio = "",
            std::optional<Budget> budget = std::nullopt);

/// A budget for the median of a list of times.
Budget atMost(Milliseconds most, const std::vector<Milliseconds>& samples, std::string reason = "");

}  // namespace tessellon::benchmarks
