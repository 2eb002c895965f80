// What ends a stress run: something that should have been so, and what was found instead.
#pragma once

#include <stdexcept>
#include <string>

namespace tessellon::stress {

struct Failure : std::runtime_error {
    Failure(const std::string& expectation, const std::string& finding)
        : std::runtime_error(expectation + "; " + finding), expected(expectation), found(finding) {}
    std::string expected;
    std::string found;
};

inline void require(bool truth, const std::string& expected, const std::string& found) {
    if (!truth) {
        throw Failure(expected, found);
    }
}

}  // namespace tessellon::stress
