#include "platform/x11/unmanaged_clients.h"

#include "platform/x11/properties.h"
#include "platform/x11/reply.h"

#include <cstddef>
#include <cstdint>

namespace tessellon::x11 {
namespace {

struct FoundWindow {
    enum class Kind { client, maybeFrame, other };
    xcb_window_t window;
    Kind kind;
};

std::vector<xcb_window_t> childrenOf(const Connection& connection,
                                     const std::vector<xcb_window_t>& parents) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    cookies.reserve(parents.size());
    for (const auto parent : parents) {
        cookies.push_back(xcb_query_tree_unchecked(connection.xcb(), parent));
    }
    connection.countRoundTrip();
    std::vector<xcb_window_t> all;
    for (const auto cookie : cookies) {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.xcb(), cookie, nullptr));
        if (tree) {
            const auto* children = xcb_query_tree_children(tree.get());
            all.insert(all.end(), children, children + xcb_query_tree_children_length(tree.get()));
        }
    }
    return all;
}

std::vector<FoundWindow> classify(const Connection& connection,
                                  const std::vector<xcb_window_t>& windows) {
    struct Question {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_property_cookie_t windowClass;
    };
    auto* const xcb = connection.xcb();
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows) {
        questions.push_back({xcb_get_window_attributes_unchecked(xcb, window),
                             xcb_get_property_unchecked(xcb, 0, window, XCB_ATOM_WM_CLASS,
                                                        XCB_GET_PROPERTY_TYPE_ANY, 0, 64)});
    }
    connection.countRoundTrip();
    std::vector<FoundWindow> found;
    found.reserve(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, questions[i].attributes, nullptr));
        const Reply<xcb_get_property_reply_t> windowClass(
            xcb_get_property_reply(xcb, questions[i].windowClass, nullptr));
        auto kind = FoundWindow::Kind::other;
        if (attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT) {
            const bool hasClass = rawProperty(windowClass.get()).exists();
            // Frames have no class, except those of i3, which bypass window managers.
            kind = hasClass && attributes->override_redirect == 0 ? FoundWindow::Kind::client
                                                                  : FoundWindow::Kind::maybeFrame;
        }
        found.push_back({windows[i], kind});
    }
    return found;
}

}  // namespace

std::vector<xcb_window_t> clientsWithoutManager(const Connection& connection) {
    // With nobody in charge, clients' windows are children of the root, or inside the frames of a
    // window manager that is coming or has just gone. What has a class and does not bypass window
    // managers would be managed if there were one. The server is held meanwhile, since a window
    // that is just being put into a frame would be found neither here nor there.
    constexpr int deepestFrame = 3;
    auto* const xcb = connection.xcb();
    xcb_grab_server(xcb);
    std::vector<xcb_window_t> clients;
    std::vector<xcb_window_t> parents{connection.root()};
    for (int level = 0; level < deepestFrame && !parents.empty(); ++level) {
        const auto windows = childrenOf(connection, parents);
        parents.clear();
        for (const auto& [window, kind] : classify(connection, windows)) {
            if (kind == FoundWindow::Kind::client) {
                clients.push_back(window);
            } else if (kind == FoundWindow::Kind::maybeFrame) {
                parents.push_back(window);
            }
        }
    }
    xcb_ungrab_server(xcb);
    xcb_flush(xcb);
    return clients;
}

}  // namespace tessellon::x11
