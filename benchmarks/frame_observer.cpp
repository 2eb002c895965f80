#include "frame_observer.h"

#include "harness/x_session.h"

#include <cstddef>
#include <stdexcept>

#include <poll.h>

namespace tessellon::benchmarks {
namespace {

using desktop::Edges;
using desktop::Frame;
using desktop::Reply;

// A look at the frames even when no event comes: some window managers move what is around a frame
// that was not watched.
constexpr int longestSleepInMilliseconds = 5;
constexpr Milliseconds quiet{500};

Edges edgesOf(const xcb_get_property_reply_t* reply) {
    constexpr std::uint32_t edges = 4;
    if (reply == nullptr || reply->format != 32 || reply->value_len < edges) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
            static_cast<int>(values[3])};
}

bool matches(const std::optional<Frame>& frame, const ExpectedFrame& expected) {
    const Frame& wanted = expected.frame;
    return frame && frame->x == wanted.x && frame->y == wanted.y && frame->width <= wanted.width &&
           frame->width > wanted.width - expected.cellWidth && frame->height <= wanted.height &&
           frame->height > wanted.height - expected.cellHeight;
}

}  // namespace

FrameObserver::FrameObserver(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no X server on display " + display);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    frameExtents_ = atom("_NET_FRAME_EXTENTS");
    shadowExtents_ = atom("_GTK_FRAME_EXTENTS");
}

FrameObserver::~FrameObserver() {
    xcb_disconnect(connection_);
}

xcb_atom_t FrameObserver::atom(const std::string& name) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void FrameObserver::watch(xcb_window_t window) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const xcb_window_t client = window;
    while (window != root_ && window != XCB_WINDOW_NONE) {
        clients_[window] = client;
        xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
        window = tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
}

// All of them in one round trip.
void FrameObserver::readFrames(const std::vector<ExpectedFrame>& windows, Frames& frames,
                               const std::set<xcb_window_t>* which) {
    struct Cookies {
        std::size_t index;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t origin;
        xcb_get_property_cookie_t frame;
        xcb_get_property_cookie_t shadow;
    };
    std::vector<Cookies> cookies;
    cookies.reserve(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const xcb_window_t window = windows[i].window;
        if (which != nullptr && !which->contains(window)) {
            continue;
        }
        const auto property = [&](xcb_atom_t name) {
            return xcb_get_property(connection_, 0, window, name, XCB_ATOM_CARDINAL, 0, 4);
        };
        cookies.push_back({i, xcb_get_geometry(connection_, window),
                           xcb_translate_coordinates(connection_, window, root_, 0, 0),
                           property(frameExtents_), property(shadowExtents_)});
    }
    frames.resize(windows.size());
    for (const Cookies& cookie : cookies) {
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection_, cookie.geometry, nullptr));
        const Reply<xcb_translate_coordinates_reply_t> origin(
            xcb_translate_coordinates_reply(connection_, cookie.origin, nullptr));
        const Reply<xcb_get_property_reply_t> frame(
            xcb_get_property_reply(connection_, cookie.frame, nullptr));
        const Reply<xcb_get_property_reply_t> shadow(
            xcb_get_property_reply(connection_, cookie.shadow, nullptr));
        if (!geometry || !origin) {
            frames[cookie.index].reset();
            continue;
        }
        const Frame client{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
        frames[cookie.index] = shrunk(grown(client, edgesOf(frame.get())), edgesOf(shadow.get()));
    }
}

std::set<xcb_window_t> FrameObserver::waitForEvents() {
    std::set<xcb_window_t> changed;
    const auto take = [&](const Reply<xcb_generic_event_t>& event) {
        // The window whose event it is comes first in all that were asked for, behind the sequence
        // number.
        const auto found = clients_.find(
            reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->window);
        if (found != clients_.end()) {
            changed.insert(found->second);
        }
    };
    // What arrived together with replies is in the library's queue already.
    if (const Reply<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_)}) {
        take(event);
    } else {
        pollfd descriptor{xcb_get_file_descriptor(connection_), POLLIN, 0};
        poll(&descriptor, 1, longestSleepInMilliseconds);
    }
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        take(event);
    }
    return changed;
}

Settling FrameObserver::measure(const std::function<void()>& action,
                                const std::vector<ExpectedFrame>& expected,
                                const std::function<bool()>& probe) {
    Frames before;
    readFrames(expected, before);
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    }
    const auto start = Clock::now();
    action();
    auto lastChange = start;
    bool probed = false;
    while (true) {
        const auto changed = waitForEvents();
        const bool probedNow = probe();
        auto frames = before;
        readFrames(expected, frames, changed.empty() ? nullptr : &changed);
        const auto now = Clock::now();
        if (frames != before) {
            before = std::move(frames);
            lastChange = now;
        }
        bool exact = true;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            exact = exact && matches(before[i], expected[i]);
        }
        if (exact || now - lastChange > quiet) {
            return {lastChange - start, exact, probed};
        }
        probed = probed || probedNow;
    }
}

}  // namespace tessellon::benchmarks
