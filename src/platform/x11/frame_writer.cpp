#include "platform/x11/frame_writer.h"

#include "platform/x11/tile_release.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

namespace tessellon::x11 {
namespace {

constexpr std::uint32_t northWestGravity = 1;
constexpr std::uint32_t sourcePager = 2;  // EWMH: a tool acting for the user
constexpr std::uint32_t hasX = 1U << 8;
constexpr std::uint32_t hasY = 1U << 9;
constexpr std::uint32_t hasWidth = 1U << 10;
constexpr std::uint32_t hasHeight = 1U << 11;
constexpr std::uint32_t stateRemove = 0;
constexpr int largestCoordinate = 32767;  // of the X protocol

// How long a client that draws its own shadow gets to announce it after it left the maximised
// state.
constexpr Seconds shadowTimeout{0.5};

// What a slow window manager may need for one of many windows, which it handles one after the
// other.
constexpr Seconds timePerWindow{0.01};

std::uint32_t coordinate(double value) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(
        std::clamp(std::round(value), -1.0 * largestCoordinate, 1.0 * largestCoordinate)));
}

std::uint32_t extent(double value) {
    return static_cast<std::uint32_t>(std::clamp(std::round(value), 1.0, 1.0 * largestCoordinate));
}

/// A size the window may rightly have when `wanted` was asked for: less than one step of its
/// increments away, or its minimum.
bool sizeAccepted(double got, double wanted, int increment, double minimum) {
    return std::abs(got - wanted) < std::max(increment, 1) || (got > wanted && wanted < minimum);
}

}  // namespace

FrameWriter::FrameWriter(Connection& connection, WindowMirror& mirror, const RawInput& input)
    : connection_(connection), mirror_(mirror), input_(input), fence_(connection) {}

void FrameWriter::requestPosition(xcb_window_t window, Point position) {
    requests_[window].position = position;
}

void FrameWriter::requestSize(xcb_window_t window, Size size) {
    requests_[window].size = size;
}

bool FrameWriter::waitForWindowManager() {
    const bool answered = fence_.wait(patience_);
    mirror_.refresh();
    return answered;
}

/// Maximised windows ignore requests on most window managers, and shaded ones keep no size, so both
/// states are left first. Gives false when the window manager does not answer.
bool FrameWriter::leaveSpecialStates(const Requests& requests) {
    Shadows awaitedShadows;
    bool sent = false;
    for (const auto& [id, request] : requests) {
        const auto* window = mirror_.find(id);
        if (window == nullptr) {
            continue;
        }
        if (window->maximizedVert || window->maximizedHorz) {
            connection_.sendToWindowManager(
                id, Atom::netWmState,
                {stateRemove, connection_.atom(Atom::netWmStateMaximizedVert),
                 connection_.atom(Atom::netWmStateMaximizedHorz), sourcePager, 0});
            sent = true;
            if (window->shadow && !keepsItsShadow(id)) {
                awaitedShadows.emplace_back(id, *window->shadow);
            }
        }
        if (window->shaded && request.size) {
            connection_.sendToWindowManager(
                id, Atom::netWmState,
                {stateRemove, connection_.atom(Atom::netWmStateShaded), 0, sourcePager, 0});
            sent = true;
        }
    }
    if (!sent) {
        return true;
    }
    if (!waitForWindowManager()) {
        return false;
    }
    awaitOtherShadows(awaitedShadows);
    return true;
}

/// Whether an earlier wait for another shadow of this window was in vain, and it has announced none
/// since. Some programs have the same one, or none, in every state.
bool FrameWriter::keepsItsShadow(xcb_window_t window) const {
    const auto found = unchangedShadows_.find(window);
    return found != unchangedShadows_.end() && found->second == mirror_.shadowChanges(window);
}

/// Waits until the shadows are others than those given. Clients announce the same one again while
/// they are at it, so it is the widths that count.
void FrameWriter::awaitOtherShadows(const Shadows& before) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(shadowTimeout);
    for (const auto& [id, old] : before) {
        // One that stays maximised keeps its shadow.
        for (const auto* window = mirror_.find(id);
             window != nullptr && window->shadow == old && !window->maximizedVert &&
             !window->maximizedHorz;
             window = mirror_.find(id)) {
            const auto announced = mirror_.shadowChanges(id);
            const Seconds left = deadline - Clock::now();
            if (left <= Seconds{0} ||
                !connection_.pullUntil(
                    [&, awaited = id] { return mirror_.shadowChanges(awaited) != announced; },
                    left)) {
                std::erase_if(unchangedShadows_, [this](const auto& entry) {
                    return mirror_.find(entry.first) == nullptr;
                });
                unchangedShadows_[id] = announced;
                return;
            }
            mirror_.refresh();
        }
    }
}

void FrameWriter::send(const ClientWindow& window, const Request& request) const {
    const Extents outer = window.frame.value_or(Extents{});
    const Extents inner = window.shadow.value_or(Extents{});
    std::uint32_t flags = northWestGravity | sourcePager << 12;
    std::array<std::uint32_t, 5> data{};
    if (request.position) {
        double x = request.position->x - inner.left;
        double y = request.position->y - inner.top;
        if (mirror_.habits().positionsMeanTheClient) {
            x += outer.left;
            y += outer.top;
        }
        flags |= hasX | hasY;
        data[1] = coordinate(x);
        data[2] = coordinate(y);
    }
    if (request.size) {
        const double border = 2.0 * window.border;
        flags |= hasWidth | hasHeight;
        data[3] = extent(request.size->width - outer.left - outer.right + inner.left + inner.right -
                         border);
        data[4] = extent(request.size->height - outer.top - outer.bottom + inner.top +
                         inner.bottom - border);
    }
    data[0] = flags;
    connection_.sendToWindowManager(window.id, Atom::netMoveresizeWindow, data);
}

bool FrameWriter::isInPlace(const ClientWindow& window, const Request& request) const {
    const Rect frame = window.visibleFrame();
    return !request.position || (std::abs(frame.x - request.position->x) < 1 &&
                                 std::abs(frame.y - request.position->y) < 1);
}

bool FrameWriter::isSettled(const ClientWindow& window, const Request& request) const {
    if (!isInPlace(window, request)) {
        return false;
    }
    const Rect frame = window.visibleFrame();
    return !request.size ||
           (sizeAccepted(frame.width, request.size->width, window.hints.widthIncrement,
                         frame.width - window.client.width + window.hints.minWidth) &&
            sizeAccepted(frame.height, request.size->height, window.hints.heightIncrement,
                         frame.height - window.client.height + window.hints.minHeight));
}

/// Where a window that hangs out of the screen would be pulled back in when it is told a size
/// alone, sizes go with the position that the window has. Gives false when the window manager does
/// not answer.
bool FrameWriter::anchorSizes(Requests& requests) {
    const auto isSizeAlone = [](const auto& entry) {
        return entry.second.size && !entry.second.position;
    };
    if (!mirror_.habits().pullsInResizedWindows ||
        std::none_of(requests.begin(), requests.end(), isSizeAlone)) {
        return true;
    }
    // It may just have ended a drag, with a last step that we have not heard of.
    if (!waitForWindowManager()) {
        return false;
    }
    for (auto& entry : requests) {
        const auto* window = mirror_.find(entry.first);
        if (window != nullptr && isSizeAlone(entry)) {
            entry.second.position = window->visibleFrame().origin();
        }
    }
    return true;
}

/// Sends again what windows have not come to have; gives false when all have it.
bool FrameWriter::sendUnsettled(const Requests& requests) {
    bool sent = false;
    for (const auto& [id, request] : requests) {
        const auto* window = mirror_.find(id);
        if (window != nullptr && !isSettled(*window, request)) {
            send(*window, request);
            sent = true;
        }
    }
    return sent;
}

FrameWriter::Frames FrameWriter::framesOf(const Requests& requests) const {
    Frames frames;
    for (const auto& entry : requests) {
        if (const auto* window = mirror_.find(entry.first)) {
            frames[window->id] = window->visibleFrame();
        }
    }
    return frames;
}

/// Of the requests, those that window managers seem not to have listened to at all, given the
/// frames from before they were sent and those that came of it. That a window in its new place has
/// another size than asked for is its own doing.
FrameWriter::Requests FrameWriter::ignored(const Requests& requests, const Frames& before,
                                           const Frames& after) const {
    Requests result;
    for (const auto& [id, request] : requests) {
        const auto* window = mirror_.find(id);
        const auto first = before.find(id);
        const auto second = after.find(id);
        if (window == nullptr || first == before.end() || second == after.end() ||
            isSettled(*window, request)) {
            continue;
        }
        const Rect frame = window->visibleFrame();
        const auto stuck = stuckAt_.find(id);
        if (frame == second->second && (frame == first->second || !isInPlace(*window, request)) &&
            (stuck == stuckAt_.end() || stuck->second != frame)) {
            result.emplace(id, request);
        }
    }
    return result;
}

/// Frees windows from the tiles that the window manager may keep them in, and sends what was asked
/// for once more. Gives false when the window manager does not answer.
bool FrameWriter::insist(const Requests& requests) {
    const Frames before = framesOf(requests);
    Shadows awaitedShadows;
    Requests freed;
    for (const auto& [id, request] : requests) {
        const auto* window = mirror_.find(id);
        if (window == nullptr) {
            continue;
        }
        const Rect frame = window->visibleFrame();
        const Point origin = request.position.value_or(frame.origin());
        const Size size = request.size.value_or(frame.size());
        if (releaseFromTile(connection_, mirror_.habits().tileRelease, *window,
                            {origin.x, origin.y, size.width, size.height})) {
            freed.emplace(id, request);
            // Its program knows of the tile only where that counts as a maximised state.
            if (window->maximizedVert && window->shadow && !keepsItsShadow(id)) {
                awaitedShadows.emplace_back(id, *window->shadow);
            }
        }
    }
    if (freed.empty()) {
        return true;
    }
    if (!waitForWindowManager()) {
        return false;
    }
    awaitOtherShadows(awaitedShadows);
    // Twice at most, for the same reasons as the first time.
    for (int attempt = 0; attempt < 2 && sendUnsettled(freed); ++attempt) {
        if (!waitForWindowManager()) {
            return false;
        }
    }
    std::erase_if(stuckAt_,
                  [this](const auto& entry) { return mirror_.find(entry.first) == nullptr; });
    for (const auto& [id, frame] : framesOf(freed)) {
        if (frame == before.at(id)) {
            stuckAt_[id] = frame;
        }
    }
    return true;
}

/// Gives false when the window manager does not answer.
bool FrameWriter::perform(Requests requests) {
    if (!anchorSizes(requests) || !leaveSpecialStates(requests)) {
        return false;
    }
    const Frames before = framesOf(requests);
    for (const auto& [id, request] : requests) {
        unanswered_.erase(id);
        if (const auto* window = mirror_.find(id)) {
            send(*window, request);
        }
    }
    if (!waitForWindowManager()) {
        return false;
    }
    // A window that is somewhere else than it was told gets told once more: the widths of its frame
    // may have changed with the first request, or the window manager kept the window's old size on
    // screen while it moved it. One that will not have it keeps what it took.
    const Frames after = framesOf(requests);
    if (!sendUnsettled(requests)) {
        return true;
    }
    if (!waitForWindowManager()) {
        return false;
    }
    // One that did not move at all may be in a tile, which is not to be left in the middle of a
    // drag.
    return input_.isLeftButtonDown() || insist(ignored(requests, before, after));
}

void FrameWriter::flush() {
    if (requests_.empty()) {
        return;
    }
    const Requests requests = std::exchange(requests_, {});
    patience_ = std::max(timeout_, timePerWindow * static_cast<double>(requests.size()));
    if (!perform(requests)) {
        for (const auto& entry : requests) {
            unanswered_.insert(entry.first);
        }
    }
}

}  // namespace tessellon::x11
