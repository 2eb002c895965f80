// Points, sizes and rectangles in 64-bit floats, as every layer above passes them around. The type
// says nothing about the coordinate space; the functions that take one do.
#pragma once

#include <optional>

namespace tessellon {

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;

    double minX() const { return x; }
    double minY() const { return y; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midX() const { return x + width * 0.5; }
    double midY() const { return y + height * 0.5; }
    Point origin() const { return {x, y}; }
    Size size() const { return {width, height}; }
    double area() const { return width * height; }

    /// True unless both the width and the height are greater than zero.
    bool isEmpty() const { return !(width > 0 && height > 0); }

    /// Half open: the left and top edges belong to the rectangle, the right and bottom ones do not.
    bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    /// Moves every edge inward by `amount` (outward when negative).
    Rect inset(double amount) const {
        return {x + amount, y + amount, width - 2 * amount, height - 2 * amount};
    }

    /// The common part, or nothing when it has no area.
    std::optional<Rect> intersection(const Rect& other) const;

    /// The smallest rectangle with whole-number edges that contains this one: minimum edges are
    /// rounded down, maximum edges up.
    Rect integral() const;
};

/// True when x, y, width and height each differ by strictly less than `tolerance`.
bool nearlyEqual(const Rect& a, const Rect& b, double tolerance);

/// True when all four numbers are finite.
bool isFinite(const Rect& r);

}  // namespace tessellon
