// Writes the page on the matrix from what its tests noted, and compares it with the one in docs/.
// `accept` puts the new one there.
#include "harness/process.h"
#include "table.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

namespace {

using namespace tessellon::desktop;
namespace fs = std::filesystem;

// What was noted with another build of the tests or of the program counts for nothing.
fs::path newestOf(const fs::path& first, const fs::path& second) {
    return fs::last_write_time(first) < fs::last_write_time(second) ? second : first;
}

int run(std::string_view wish) {
    const Page page =
        makePage(Outcomes(MATRIX_OUTCOMES), newestOf(MATRIX_TESTS_PATH, TESSELLON_PROGRAM_PATH),
                 fileContents(MATRIX_PAGE_FRAME));
    constexpr std::size_t mostNamed = 40;
    for (std::size_t i = 0; i < std::min(page.missing.size(), mostNamed); ++i) {
        std::cerr << "not run, or failed: " << page.missing[i] << '\n';
    }
    if (!page.missing.empty()) {
        std::cerr << page.missing.size() << " cells of the matrix have no outcome\n";
        return EXIT_FAILURE;
    }
    const fs::path known = MATRIX_PAGE;
    if (wish == "accept") {
        std::ofstream(known, std::ios::binary) << page.markdown;
        return EXIT_SUCCESS;
    }
    if (comparable(page.markdown) == comparable(fileContents(known))) {
        return EXIT_SUCCESS;
    }
    const fs::path written = fs::path(MATRIX_OUTCOMES) / "desktops.md";
    std::ofstream(written, std::ios::binary) << page.markdown;
    std::cerr << "The table is another one than that in " << known << ".\nThe new one is in "
              << written << ".\nTo take it, run this program with the word accept.\n";
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc > 1 ? argv[1] : "");
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
