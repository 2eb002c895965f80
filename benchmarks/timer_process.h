// The benchmarks of panels and windows run in processes of their own, on a private desktop, and
// print what they measured: one line for each sample, a name and milliseconds.
#pragma once

#include "statistics.h"

#include <map>
#include <string>
#include <vector>

namespace tessellon::benchmarks {

using Samples = std::map<std::string, std::vector<Milliseconds>>;

struct Display {
    int width = 1920;
    int height = 1080;
    bool hasCompositor = true;

    /// "1920 × 1080, with a compositor".
    std::string description() const;
};

/// Runs such a program to its end on a new desktop with a window manager. Throws when it fails.
Samples samplesOf(const std::string& program, const Display& display = {});

}  // namespace tessellon::benchmarks
