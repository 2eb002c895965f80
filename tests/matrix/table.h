// The page that tells the reader what came of the matrix.
#pragma once

#include "outcomes.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

/// What begins the one line that names versions. They change without anything else changing, so
/// that line is left out when pages are compared.
inline constexpr std::string_view versionsLine = "Tried with: ";

struct Page {
    std::string markdown;
    /// Cells that nobody ran, by name.
    std::vector<std::string> missing;
};

/// Makes the page from the outcomes that are newer than the file `newerThan`. The words around the
/// table are those of the file `frame`, in place of its line "@table@".
Page makePage(const Outcomes& outcomes, const std::filesystem::path& newerThan,
              std::string_view frame);

/// The page without what may differ from one machine to the next.
std::string comparable(std::string_view markdown);

}  // namespace tessellon::desktop
