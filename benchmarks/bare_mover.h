// Moves windows with as little as it takes: the widths of their frames are read, the window manager
// is told, and one fence tells when it is done. The measure for what the program does on top.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

#include <xcb/xcb.h>

namespace tessellon::benchmarks {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using BareReply = std::unique_ptr<T, FreeMemory>;

using Place = std::array<int, 4>;  // x, y, width, height of the whole frame

struct BareMove {
    xcb_window_t window = XCB_WINDOW_NONE;
    Place place{};
    bool operator==(const BareMove&) const = default;
};

class BareMover {
  public:
    /// Borrows the connection; waits for events on it that belong to nobody else.
    explicit BareMover(xcb_connection_t* connection);

    xcb_window_t root() const { return root_; }
    xcb_atom_t intern(std::string_view name) const;

    /// Has the window manager move the windows and waits until it has.
    void move(std::span<const BareMove> moves);

  private:
    void send(const BareMove& move, const std::array<std::uint32_t, 4>& edges) const;
    void waitForWindowManager();

    xcb_connection_t* connection_;
    xcb_window_t root_;
    xcb_atom_t frameExtents_;
    xcb_atom_t moveResizeWindow_;
    xcb_window_t fence_;
    std::int16_t fenceX_ = 0;
};

}  // namespace tessellon::benchmarks
