// The program's own connection to the X server: opening it, pulling its events and handing them
// out.
//
// Events reach two kinds of listeners. State listeners keep a picture of the desktop up to date and
// hear of an event the moment it is pulled, also while somebody waits for a reply. Action listeners
// do things (obey a hot key) and hear of it later, from the run loop, never nested in another
// action.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/run_loop.h"
#include "platform/x11/atoms.h"
#include "platform/x11/reply.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class Connection {
  public:
    /// Opens the named display, or that of the environment variable DISPLAY when the name is empty;
    /// null when it cannot be reached.
    static std::unique_ptr<Connection> open(const std::string& display = {});
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* xcb() const { return xcb_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    xcb_atom_t atom(Atom name) const { return atoms_[name]; }

    /// The part of a resource id that tells its client; equal for all resources of one client.
    std::uint32_t clientBase(std::uint32_t resource) const;

    using Listener = std::function<void(const xcb_generic_event_t&)>;
    Token addStateListener(Listener listener) const {
        return state_.subscribe(std::move(listener));
    }
    Token addActionListener(Listener listener) const {
        return action_.subscribe(std::move(listener));
    }

    /// Serves the connection from `runLoop` until the connection is destroyed.
    void attach(RunLoop& runLoop);

    /// The event that the action listeners are hearing of; null while none is told.
    const xcb_generic_event_t* told() const { return told_; }

    /// A moment in the order of what the server does. Costs no round trip.
    std::uint32_t mark() const;
    /// Whether the event that is told happened before a mark, and was merely told late; false while
    /// none is told.
    bool toldIsOlderThan(std::uint32_t mark) const;

    /// A number for the press of a key that is being told, another one for each; nothing while none
    /// is told. What happened before the press has been pulled, so a question to the server would
    /// tell no more about that.
    std::optional<std::uint64_t> toldPress() const;

    /// Called after the events of a turn were handed out, before the loop waits again.
    const Signal<>& idle() const { return idle_; }
    /// Emitted once when the server is gone.
    const Signal<>& lost() const { return lost_; }
    bool isLost() const { return lostReported_ || xcb_connection_has_error(xcb_) != 0; }

    /// Sends what is buffered, waits until the server has handled it, and pulls every event up to
    /// then. One round trip.
    void sync();

    /// Pulls the events that have arrived already.
    void pull();

    /// Pulls events until `done` holds; false when `timeout` has passed first or the server is
    /// gone.
    bool pullUntil(const std::function<bool()>& done, std::chrono::duration<double> timeout);

    /// To be called wherever replies are waited for: a batch of pipelined requests counts once.
    void countRoundTrip() const { ++roundTrips_; }
    std::uint64_t roundTrips() const { return roundTrips_; }

    /// Sends an EWMH client message to the root window, for the window manager.
    void sendToWindowManager(xcb_window_t window, Atom type,
                             const std::array<std::uint32_t, 5>& data) const;

  private:
    explicit Connection(xcb_connection_t* connection, const xcb_screen_t* screen);
    void dispatch();

    using Event = Reply<xcb_generic_event_t>;

    xcb_connection_t* xcb_;
    const xcb_screen_t* screen_;
    Atoms atoms_;
    Signal<const xcb_generic_event_t&> state_;
    Signal<const xcb_generic_event_t&> action_;
    Signal<> idle_;
    Signal<> lost_;
    std::deque<Event> pending_;
    const xcb_generic_event_t* told_ = nullptr;
    std::uint64_t toldSoFar_ = 0;
    bool dispatching_ = false;
    bool lostReported_ = false;
    mutable std::uint64_t roundTrips_ = 0;
    Token readable_;
    Token blocking_;
};

/// The type of an event without the bit that marks events sent by clients.
inline std::uint8_t eventType(const xcb_generic_event_t& event) {
    return event.response_type & 0x7f;
}

/// The event as the structure of its type.
template <typename T>
const T& eventAs(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
}

}  // namespace tessellon::x11
