#include "platform/x11/unlisted_docks.h"

#include "platform/x11/properties.h"
#include "platform/x11/reply.h"
#include "platform/x11/unmanaged_clients.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace tessellon::x11 {
namespace {

/// Those of the windows that are docks or keep room at an edge of the screen. One round trip.
std::vector<xcb_window_t> docksAmong(const Connection& connection,
                                     const std::vector<xcb_window_t>& windows) {
    struct Question {
        xcb_get_property_cookie_t types, strutPartial, strut;
    };
    constexpr std::uint32_t words = 32;
    auto* const xcb = connection.xcb();
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows) {
        const auto property = [&](Atom name) {
            return xcb_get_property_unchecked(xcb, 0, window, connection.atom(name),
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, words);
        };
        questions.push_back({property(Atom::netWmWindowType), property(Atom::netWmStrutPartial),
                             property(Atom::netWmStrut)});
    }
    std::vector<xcb_window_t> docks;
    if (questions.empty()) {
        return docks;
    }
    connection.countRoundTrip();
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto reply = [&](xcb_get_property_cookie_t cookie) {
            return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(xcb, cookie, nullptr));
        };
        const auto typesReply = reply(questions[i].types);
        const auto partial = reply(questions[i].strutPartial);
        const auto plain = reply(questions[i].strut);
        const auto types = cardinals(rawProperty(typesReply.get()));
        const bool isDock = std::find(types.begin(), types.end(),
                                      connection.atom(Atom::netWmWindowTypeDock)) != types.end();
        if (isDock || strut(rawProperty(partial.get()), rawProperty(plain.get()))) {
            docks.push_back(windows[i]);
        }
    }
    return docks;
}

}  // namespace

std::vector<xcb_window_t> UnlistedDocks::take(const std::function<bool(xcb_window_t)>& isKnown) {
    if (std::exchange(looksEverywhere_, false)) {
        const auto clients = clientsWithoutManager(connection_);
        candidates_.insert(clients.begin(), clients.end());
    }
    std::vector<xcb_window_t> unknown;
    for (const auto window : std::exchange(candidates_, {})) {
        if (!isKnown(window)) {
            unknown.push_back(window);
        }
    }
    return docksAmong(connection_, unknown);
}

}  // namespace tessellon::x11
