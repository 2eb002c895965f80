// The table that a run of the benchmark ends in.
#pragma once

#include "statistics.h"

#include <optional>
#include <string>
#include <vector>

namespace tessellon::benchmarks {

/// A measured value beside the most (or least) that it should be.
struct Budget {
    std::string text;
    bool met = false;
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
    /// Starts a table of its own under a heading; the rows and notes that follow belong to it.
    void section(std::string heading);
    void add(Row row);
    /// A remark below the table.
    void note(std::string text);

    /// Everything as Markdown.
    std::string markdown() const;

  private:
    struct Section {
        std::string heading;
        std::vector<Row> rows;
        std::vector<std::string> notes;
    };
    std::vector<Section> sections_;
};

/// "1.23" with as many decimals as asked for.
std::string number(double value, int decimals = 2);

/// "1.23 ms".
std::string text(Milliseconds time);

/// A row for a list of times.
Row timeRow(std::string what, const std::vector<Milliseconds>& samples, std::string ratio = "",
            std::optional<Budget> budget = std::nullopt);

}  // namespace tessellon::benchmarks
