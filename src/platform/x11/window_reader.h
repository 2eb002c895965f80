// Reads facets of client windows from the server, many windows in one round trip.
#pragma once

#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// Things about a window that change, and are read, independently of each other. Bit values.
namespace facet {
inline constexpr std::uint32_t geometry = 1U << 0;
inline constexpr std::uint32_t mapping = 1U << 1;
inline constexpr std::uint32_t frameExtents = 1U << 2;
inline constexpr std::uint32_t shadowExtents = 1U << 3;
inline constexpr std::uint32_t state = 1U << 4;
inline constexpr std::uint32_t wmState = 1U << 5;
inline constexpr std::uint32_t title = 1U << 6;
inline constexpr std::uint32_t windowClass = 1U << 7;
inline constexpr std::uint32_t gtkApplicationId = 1U << 8;
inline constexpr std::uint32_t kind = 1U << 9;
inline constexpr std::uint32_t desktop = 1U << 10;
inline constexpr std::uint32_t strut = 1U << 11;
inline constexpr std::uint32_t hints = 1U << 12;
inline constexpr std::uint32_t parent = 1U << 13;
inline constexpr std::uint32_t process = 1U << 14;
inline constexpr std::uint32_t all = (1U << 15) - 1;
}  // namespace facet

class WindowReader {
  public:
    explicit WindowReader(const Connection& connection);

    /// The facet that a change of this property concerns; 0 for properties that nobody reads.
    std::uint32_t facetOf(xcb_atom_t property) const;

    /// Take the widths of frames from the window manager's windows instead of _NET_FRAME_EXTENTS;
    /// costs a round trip more.
    enum class FrameWidths : std::uint8_t { announced, measured };
    void setFrameWidths(FrameWidths widths) { frameWidths_ = widths; }

    struct Job {
        ClientWindow* window = nullptr;
        std::uint32_t facets = 0;
        /// Set when the window has died.
        bool gone = false;
        /// Set, with facet::process, for a client that runs on another machine.
        bool isRemote = false;
    };

    /// Fills in the asked facets of every window. `meanwhile` is called when everything is asked
    /// and nothing answered yet: replies that are waited for there cost no round trip more. Follows
    /// parents up to the root, so a window that was reparented costs a round trip for each level
    /// between.
    void read(std::span<Job> jobs, const std::function<void()>& meanwhile) const;

  private:
    struct Cookies;
    Cookies send(const Job& job) const;
    void collect(Job& job, const Cookies& cookies) const;
    void findTopLevels(std::span<Job> jobs) const;
    void measureFrames(std::span<Job> jobs) const;
    void readProcesses(std::span<Job> jobs) const;

    const Connection& connection_;
    bool canTellProcesses_;
    FrameWidths frameWidths_ = FrameWidths::announced;
};

}  // namespace tessellon::x11
