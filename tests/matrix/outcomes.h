// What came of the cells, in one small file each: tests write them, the table reads them.
#pragma once

#include "rows.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tessellon::desktop {

struct Cell {
    std::string_view windowManager;
    Row row;
    Subject subject;
};

class Outcomes {
  public:
    explicit Outcomes(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void write(const Cell& cell, std::string_view outcome) const;
    void forget(const Cell& cell) const;

    /// Nothing for a cell that was not run since the file at `newerThan` was made.
    std::optional<std::string> read(const Cell& cell, const std::filesystem::path& newerThan) const;

  private:
    std::filesystem::path file(const Cell& cell) const;

    std::filesystem::path folder_;
};

}  // namespace tessellon::desktop
