#include "platform/x11/connection.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

#include <poll.h>

namespace tessellon::x11 {
namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number) {
        xcb_screen_next(&screens);
    }
    return screens.rem > 0 ? screens.data : nullptr;
}

}  // namespace

std::unique_ptr<Connection> Connection::open(const std::string& display) {
    int screenNumber = 0;
    xcb_connection_t* connection =
        xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    if (xcb_connection_has_error(connection) == 0) {
        if (const auto* screen = screenOf(connection, screenNumber)) {
            return std::unique_ptr<Connection>(new Connection(connection, screen));
        }
    }
    xcb_disconnect(connection);
    return nullptr;
}

Connection::Connection(xcb_connection_t* connection, const xcb_screen_t* screen)
    : xcb_(connection), screen_(screen), atoms_(connection) {
    countRoundTrip();
}

Connection::~Connection() {
    readable_.reset();
    blocking_.reset();
    xcb_disconnect(xcb_);
}

std::uint32_t Connection::clientBase(std::uint32_t resource) const {
    return resource & ~xcb_get_setup(xcb_)->resource_id_mask;
}

void Connection::attach(RunLoop& runLoop) {
    // The descriptor alone is not enough: a blocking reply moves events that arrive with it into
    // xcb's own queue, where poll(2) does not see them.
    readable_ = runLoop.watchReadable(xcb_get_file_descriptor(xcb_), [this] { dispatch(); });
    blocking_ = runLoop.beforeBlocking([this] { dispatch(); });
}

void Connection::pull() {
    while (Event event{xcb_poll_for_event(xcb_)}) {
        if (event->response_type == 0) {
            continue;  // an error: a request about a window that has died meanwhile
        }
        state_.emit(*event);
        pending_.push_back(std::move(event));
    }
}

void Connection::dispatch() {
    if (dispatching_) {
        return;
    }
    dispatching_ = true;
    pull();
    do {
        for (; !pending_.empty(); pull()) {
            const Event event = std::move(pending_.front());
            pending_.pop_front();
            told_ = event.get();
            ++toldSoFar_;
            action_.emit(*event);
            told_ = nullptr;
        }
        idle_.emit();
        xcb_flush(xcb_);
        pull();  // what came while somebody waited for a reply would not wake the loop
    } while (!pending_.empty());
    dispatching_ = false;
    if (!lostReported_ && xcb_connection_has_error(xcb_) != 0) {
        lostReported_ = true;
        readable_.reset();
        lost_.emit();
    }
}

std::optional<std::uint64_t> Connection::toldPress() const {
    const bool isPress = told_ != nullptr && eventType(*told_) == XCB_KEY_PRESS;
    return isPress ? std::optional(toldSoFar_) : std::nullopt;
}

std::uint32_t Connection::mark() const {
    const auto request = xcb_no_operation(xcb_);
    // What happens from now on has to come after it.
    xcb_flush(xcb_);
    return request.sequence;
}

bool Connection::toldIsOlderThan(std::uint32_t mark) const {
    // An event carries the number of the request that the server had served last.
    return told_ != nullptr && static_cast<std::int32_t>(told_->full_sequence - mark) < 0;
}

void Connection::sync() {
    countRoundTrip();
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb_, xcb_get_input_focus_unchecked(xcb_), nullptr));
    pull();
}

bool Connection::pullUntil(const std::function<bool()>& done,
                           std::chrono::duration<double> timeout) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(timeout);
    xcb_flush(xcb_);
    for (;;) {
        pull();
        if (done()) {
            return true;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0 || xcb_connection_has_error(xcb_) != 0) {
            return false;
        }
        pollfd descriptor{xcb_get_file_descriptor(xcb_), POLLIN, 0};
        if (poll(&descriptor, 1, static_cast<int>(left.count())) < 0 && errno != EINTR) {
            return false;
        }
    }
}

void Connection::sendToWindowManager(xcb_window_t window, Atom type,
                                     const std::array<std::uint32_t, 5>& data) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(xcb_, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

}  // namespace tessellon::x11
