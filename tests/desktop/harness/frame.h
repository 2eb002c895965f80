// Rectangles in the pixels of the X screen, top-left origin, as the desktop tests compare them.
#pragma once

#include <ostream>

namespace tessellon::desktop {

struct Frame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Frame&) const = default;
};

/// Distances of the four edges, in pixels.
struct Edges {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    bool operator==(const Edges&) const = default;
};

inline Frame shrunk(const Frame& frame, const Edges& by) {
    return {frame.x + by.left, frame.y + by.top, frame.width - by.left - by.right,
            frame.height - by.top - by.bottom};
}

inline Frame grown(const Frame& frame, const Edges& by) {
    return shrunk(frame, {-by.left, -by.right, -by.top, -by.bottom});
}

inline std::ostream& operator<<(std::ostream& out, const Frame& frame) {
    return out << '(' << frame.x << ", " << frame.y << ", " << frame.width << ", " << frame.height
               << ')';
}

}  // namespace tessellon::desktop
