// What the program holds of the X server, of memory and of the kernel, at quiet moments; and
// whether that grows.
#pragma once

#include "harness/x_session.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tessellon::stress {

/// By name: "WINDOW", "PIXMAP" and so on as the X-Resource extension counts them over all
/// connections of the process, "connections", "pixmap KiB", "RSS KiB", "descriptors", "threads".
using Figures = std::map<std::string, long>;

/// Nothing when the process is gone.
std::optional<Figures> measure(desktop::XSession& x, pid_t process);

struct Sample {
    std::size_t action = 0;
    Figures figures;
};

/// The samples of one process.
class Growth {
  public:
    explicit Growth(std::size_t bornAt) : bornAt_(bornAt) {}
    void add(std::size_t action, Figures figures);

    struct Line {
        std::string name;
        /// The usual once it has warmed up, and at the end of its life: medians.
        long early = 0;
        long late = 0;
        long allowed = 0;
        bool grows() const { return late - early > allowed; }
    };
    /// Nothing when it did not live long enough to be judged.
    std::vector<Line> judge() const;

    std::size_t bornAt() const { return bornAt_; }
    const std::vector<Sample>& samples() const { return samples_; }

  private:
    std::size_t bornAt_;
    std::vector<Sample> samples_;
};

}  // namespace tessellon::stress
