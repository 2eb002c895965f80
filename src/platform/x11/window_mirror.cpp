#include "platform/x11/window_mirror.h"

#include "platform/x11/unmanaged_clients.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessellon::x11 {
namespace {

// Parts of the root window's state that are read again independently of each other.
constexpr std::uint32_t rootClients = 1U << 0;
constexpr std::uint32_t rootActive = 1U << 1;
constexpr std::uint32_t rootDesktop = 1U << 2;
constexpr std::uint32_t rootManager = 1U << 3;
constexpr std::uint32_t rootChildren = 1U << 4;
constexpr std::uint32_t rootWorkArea = 1U << 5;
constexpr std::uint32_t rootAll = (1U << 6) - 1;

// What a refresh may find changed again while it reads; each pass catches up with the one before.
constexpr int mostPasses = 8;

constexpr std::uint32_t mostClients = 65536;

constexpr std::uint32_t identityFacets =
    facet::process | facet::windowClass | facet::gtkApplicationId | facet::kind;

constexpr std::uint32_t frameFacets =
    facet::geometry | facet::frameExtents | facet::shadowExtents | facet::parent;

void selectEvents(const Connection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
}

}  // namespace

struct WindowMirror::RootCookies {
    xcb_get_property_cookie_t clients, active, desktop, manager, workArea;
    xcb_query_tree_cookie_t children;
};

WindowMirror::WindowMirror(Connection& connection)
    : connection_(connection), reader_(connection), docks_(connection), dirtyRoot_(rootAll) {
    // Frames move without the clients being told by some window managers, so the children of the
    // root are watched as well as the clients themselves.
    selectEvents(connection_, connection_.root(),
                 XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                     XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    listener_ = connection_.addStateListener([this](const auto& event) { onEvent(event); });
}

Token WindowMirror::beginReads() {
    if (depth_++ == 0) {
        fresh_ = false;
    }
    return Token([this] { --depth_; });
}

void WindowMirror::look() {
    if (depth_ > 0 && fresh_) {
        return;
    }
    connection_.pull();
    if (isMarked()) {
        // The answers come behind all events of what happened before.
        readChanges();
        connection_.pull();
    } else if (const auto press = connection_.toldPress();
               !press || std::exchange(lookedAtPress_, press) == press) {
        // Whoever looks again at the same press wants to know what has happened meanwhile.
        connection_.sync();
    }
    refresh();
    fresh_ = true;
}

void WindowMirror::onEvent(const xcb_generic_event_t& event) {
    switch (eventType(event)) {
        case XCB_PROPERTY_NOTIFY:
            onProperty(eventAs<xcb_property_notify_event_t>(event));
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto& notify = eventAs<xcb_configure_notify_event_t>(event);
            if (notify.event == connection_.root()) {
                dirtyRoot_ |= rootChildren;
                markByTopLevel(notify.window, facet::geometry);
            } else {
                mark(notify.window, facet::geometry);
            }
            break;
        }
        case XCB_GRAVITY_NOTIFY:
            mark(eventAs<xcb_gravity_notify_event_t>(event).window, facet::geometry);
            break;
        case XCB_CIRCULATE_NOTIFY:
        case XCB_CREATE_NOTIFY:
            dirtyRoot_ |= rootChildren;
            break;
        case XCB_MAP_NOTIFY: {
            const auto& notify = eventAs<xcb_map_notify_event_t>(event);
            mappingChanged(notify.window);
            if (notify.override_redirect == 0) {
                appeared(notify.window);
            }
            break;
        }
        case XCB_UNMAP_NOTIFY:
            mappingChanged(eventAs<xcb_unmap_notify_event_t>(event).window);
            break;
        case XCB_REPARENT_NOTIFY: {
            const auto window = eventAs<xcb_reparent_notify_event_t>(event).window;
            dirtyRoot_ |= rootChildren;
            appeared(window);
            mark(window, facet::parent | facet::geometry | facet::mapping);
            markByTopLevel(window, facet::parent | facet::geometry | facet::mapping);
            break;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto window = eventAs<xcb_destroy_notify_event_t>(event).window;
            dirtyRoot_ |= rootChildren;
            if (window == checkWindow_) {
                checkWindow_ = XCB_WINDOW_NONE;
                windowManagerAlive_ = false;
                habits_ = {};
                ++windowManagerRevision_;
                dirtyRoot_ |= rootManager | rootClients;
            }
            docks_.gone(window);
            forget(window);
            break;
        }
        default:
            break;
    }
}

bool WindowMirror::windowManagerIsInDoubt() const {
    return (dirtyRoot_ & rootManager) != 0;
}

void WindowMirror::mappingChanged(xcb_window_t window) {
    dirtyRoot_ |= windowManagerAlive() ? 0 : rootClients;
    mark(window, facet::mapping);
    markByTopLevel(window, facet::mapping);
}

void WindowMirror::appeared(xcb_window_t window) {
    if (!habits_.listsDocks && !windows_.contains(window)) {
        docks_.appeared(window);
    }
}

void WindowMirror::onProperty(const xcb_property_notify_event_t& event) {
    const std::array<std::pair<Atom, std::uint32_t>, 5> table{{
        {Atom::netClientList, rootClients},
        {Atom::netActiveWindow, rootActive},
        {Atom::netCurrentDesktop, rootDesktop | rootWorkArea},
        {Atom::netSupportingWmCheck, rootManager},
        {Atom::netWorkarea, rootWorkArea},
    }};
    if (event.window == connection_.root() || event.window == checkWindow_) {
        for (const auto& [name, part] : table) {
            if (connection_.atom(name) == event.atom) {
                dirtyRoot_ |= part;
            }
        }
        return;
    }
    if (const auto found = windows_.find(event.window); found != windows_.end()) {
        const auto facets = reader_.facetOf(event.atom);
        if ((facets & facet::shadowExtents) != 0) {
            ++found->second.shadowChanges;
        }
        mark(event.window, facets);
    }
}

void WindowMirror::mark(xcb_window_t id, std::uint32_t facets) {
    const auto found = windows_.find(id);
    if (facets == 0 || found == windows_.end()) {
        return;
    }
    found->second.dirty |= facets;
    dirtyWindows_.insert(id);
}

void WindowMirror::markByTopLevel(xcb_window_t id, std::uint32_t facets) {
    const auto [first, last] = clientsOfTopLevel_.equal_range(id);
    for (auto client = first; client != last; ++client) {
        mark(client->second, facets);
    }
}

void WindowMirror::forget(xcb_window_t id) {
    const auto found = windows_.find(id);
    if (found == windows_.end()) {
        return;
    }
    // Nothing may point to it, also before the next refresh.
    std::erase(managed_, &found->second.window);
    std::erase(stacking_, &found->second.window);
    std::erase_if(clientsOfTopLevel_, [&](const auto& pair) { return pair.second == id; });
    dirtyWindows_.erase(id);
    windows_.erase(found);
    listsDirty_ = true;
    ++identityRevision_;
}

void WindowMirror::adopt(xcb_window_t id) {
    selectEvents(connection_, id, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    auto& tracked = windows_[id];
    tracked.window.id = id;
    tracked.window.generation = nextGeneration_++;
    dirtyWindows_.insert(id);
}

WindowMirror::RootCookies WindowMirror::sendRootRequests(std::uint32_t parts) const {
    const auto property = [&](Atom name, std::uint32_t words) {
        return xcb_get_property_unchecked(connection_.xcb(), 0, connection_.root(),
                                          connection_.atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0,
                                          words);
    };
    RootCookies cookies{};
    if ((parts & rootManager) != 0) {
        cookies.manager = property(Atom::netSupportingWmCheck, 1);
    }
    if ((parts & rootClients) != 0) {
        cookies.clients = property(Atom::netClientList, mostClients);
    }
    if ((parts & rootActive) != 0) {
        cookies.active = property(Atom::netActiveWindow, 1);
    }
    if ((parts & rootDesktop) != 0) {
        cookies.desktop = property(Atom::netCurrentDesktop, 1);
    }
    if ((parts & rootWorkArea) != 0) {
        cookies.workArea = property(Atom::netWorkarea, 4096);
    }
    if ((parts & rootChildren) != 0) {
        cookies.children = xcb_query_tree_unchecked(connection_.xcb(), connection_.root());
    }
    return cookies;
}

void WindowMirror::collectRoot(const RootCookies& cookies, std::uint32_t parts) {
    using PropertyReply = Reply<xcb_get_property_reply_t>;
    const auto property = [&](xcb_get_property_cookie_t cookie) {
        return PropertyReply(xcb_get_property_reply(connection_.xcb(), cookie, nullptr));
    };
    std::optional<xcb_window_t> manager;
    std::optional<std::vector<xcb_window_t>> clients;
    if ((parts & rootManager) != 0) {
        const auto reply = property(cookies.manager);
        manager = firstCardinal(rawProperty(reply.get())).value_or(XCB_WINDOW_NONE);
    }
    if ((parts & rootClients) != 0) {
        const auto reply = property(cookies.clients);
        clients = cardinals(rawProperty(reply.get()));
    }
    if ((parts & rootActive) != 0) {
        const auto reply = property(cookies.active);
        active_ = firstCardinal(rawProperty(reply.get())).value_or(XCB_WINDOW_NONE);
    }
    if ((parts & rootDesktop) != 0) {
        const auto reply = property(cookies.desktop);
        currentDesktop_ = firstCardinal(rawProperty(reply.get())).value_or(0);
    }
    if ((parts & rootWorkArea) != 0) {
        const auto reply = property(cookies.workArea);
        const auto areas = cardinals(rawProperty(reply.get()));
        const std::size_t first = std::size_t{4} * currentDesktop_;
        workArea_.reset();
        if (areas.size() >= first + 4) {
            const auto number = [&](std::size_t i) {
                return static_cast<double>(static_cast<std::int32_t>(areas[first + i]));
            };
            workArea_ = Rect{number(0), number(1), number(2), number(3)};
        }
    }
    if ((parts & rootChildren) != 0) {
        const Reply<xcb_query_tree_reply_t> reply(
            xcb_query_tree_reply(connection_.xcb(), cookies.children, nullptr));
        rootChildren_.clear();
        if (reply) {
            const auto* children = xcb_query_tree_children(reply.get());
            rootChildren_.assign(children, children + xcb_query_tree_children_length(reply.get()));
        }
        listsDirty_ = true;
    }
    if (manager) {
        readWindowManager(*manager);
    }
    if (!windowManagerAlive()) {
        if ((parts & (rootClients | rootManager | rootChildren)) != 0) {
            updateMembership(clientsWithoutManager(connection_));
        }
    } else if (clients) {
        updateMembership(*clients);
    }
}

void WindowMirror::readWindowManager(xcb_window_t candidate) {
    const bool wasAlive = windowManagerAlive();
    const auto former = std::exchange(checkWindow_, candidate);
    std::optional<WindowManagerHabits> habits;
    if (candidate != XCB_WINDOW_NONE) {
        // Selected before it is read, so that a change in between is not missed.
        selectEvents(connection_, candidate,
                     XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
        habits = readHabits(connection_, candidate);
    }
    windowManagerAlive_ = habits.has_value();
    habits_ = habits.value_or(WindowManagerHabits{});
    reader_.setFrameWidths(habits_.announcesFrameWidths ? WindowReader::FrameWidths::announced
                                                        : WindowReader::FrameWidths::measured);
    if (wasAlive != windowManagerAlive() || former != candidate) {
        ++windowManagerRevision_;
        docks_.windowManagerChanged();
    }
    if (!wasAlive && windowManagerAlive()) {
        dirtyRoot_ |= rootAll & ~rootManager;
    }
}

void WindowMirror::updateMembership(const std::vector<xcb_window_t>& clients) {
    const std::unordered_set<xcb_window_t> members(clients.begin(), clients.end());
    for (auto& [id, tracked] : windows_) {
        tracked.window.managed = members.contains(id);
    }
    for (const auto id : clients) {
        if (!windows_.contains(id) && id != XCB_WINDOW_NONE) {
            adopt(id);
            windows_[id].window.managed = true;
        }
    }
    listsDirty_ = true;
    ++identityRevision_;
}

void WindowMirror::readChanges() {
    const auto parts = std::exchange(dirtyRoot_, 0);
    const auto cookies = sendRootRequests(parts);
    std::vector<WindowReader::Job> jobs;
    jobs.reserve(dirtyWindows_.size());
    for (const auto id : dirtyWindows_) {
        auto& tracked = windows_.at(id);
        jobs.push_back({&tracked.window, tracked.dirty, false});
        if ((tracked.dirty & identityFacets) != 0) {
            ++identityRevision_;
        }
        tracked.dirty = 0;
    }
    dirtyWindows_.clear();
    // Jobs point into the map: no event may be handed out between here and the end of the reading,
    // and none is, since replies alone are waited for. Windows that the root brings are new ones.
    reader_.read(jobs, [&] { collectRoot(cookies, parts); });
    std::vector<xcb_window_t> gone;
    for (const auto& job : jobs) {
        if (job.gone) {
            gone.push_back(job.window->id);
        } else if ((job.facets & facet::parent) != 0) {
            const auto id = job.window->id;
            std::erase_if(clientsOfTopLevel_, [&](const auto& pair) { return pair.second == id; });
            clientsOfTopLevel_.emplace(job.window->topLevel, id);
            listsDirty_ = true;
        }
    }
    for (const auto id : gone) {
        forget(id);
    }
}

void WindowMirror::adoptUnlistedDocks() {
    if (habits_.listsDocks) {
        docks_.clear();
        return;
    }
    for (const auto window : docks_.take([this](auto id) { return windows_.contains(id); })) {
        adopt(window);
    }
}

std::vector<const ClientWindow*> WindowMirror::reservingRoom() const {
    std::vector<const ClientWindow*> result;
    for (const auto& [id, tracked] : windows_) {
        const auto& window = tracked.window;
        if (window.strut && window.hasGeometry && (window.managed || window.viewable)) {
            result.push_back(&window);
        }
    }
    return result;
}

void WindowMirror::rebuildLists() {
    managed_.clear();
    stacking_.clear();
    for (const auto& [id, tracked] : windows_) {
        if (tracked.window.managed) {
            managed_.push_back(&tracked.window);
        }
    }
    std::sort(managed_.begin(), managed_.end(),
              [](const auto* a, const auto* b) { return a->generation < b->generation; });
    for (auto child = rootChildren_.rbegin(); child != rootChildren_.rend(); ++child) {
        const auto* seen = findByTopLevel(*child);
        if (seen != nullptr && seen->managed) {
            stacking_.push_back(seen);
        }
        const auto [first, last] = clientsOfTopLevel_.equal_range(*child);
        for (auto client = first; client != last; ++client) {
            const auto* window = find(client->second);
            if (window != nullptr && window != seen && window->managed) {
                stacking_.push_back(window);
            }
        }
    }
    listsDirty_ = false;
}

void WindowMirror::refresh() {
    for (int pass = 0; pass < mostPasses && isMarked(); ++pass) {
        readChanges();
        adoptUnlistedDocks();
    }
    if (listsDirty_) {
        rebuildLists();
    }
}

const ClientWindow* WindowMirror::find(xcb_window_t id) const {
    const auto found = windows_.find(id);
    return found != windows_.end() && found->second.window.hasGeometry ? &found->second.window
                                                                       : nullptr;
}

const ClientWindow* WindowMirror::find(xcb_window_t id, std::uint64_t generation) const {
    const auto* window = find(id);
    return window != nullptr && window->generation == generation ? window : nullptr;
}

const ClientWindow* WindowMirror::findByTopLevel(xcb_window_t topLevel) const {
    const ClientWindow* best = nullptr;
    const auto [first, last] = clientsOfTopLevel_.equal_range(topLevel);
    for (auto client = first; client != last; ++client) {
        const auto* window = find(client->second);
        if (window != nullptr && (best == nullptr || (window->viewable && !best->viewable))) {
            best = window;
        }
    }
    return best;
}

bool WindowMirror::knowsFrame(const ClientWindow& window) const {
    const auto found = windows_.find(window.id);
    return found != windows_.end() && window.hasGeometry &&
           (found->second.dirty & frameFacets) == 0;
}

bool WindowMirror::isOnCurrentDesktop(const ClientWindow& window) const {
    constexpr std::uint32_t allDesktops = 0xffffffff;
    if (habits_.hasDesktopPerMonitor) {
        return window.viewable;
    }
    const auto desktop = window.desktop.value_or(currentDesktop_);
    return desktop == currentDesktop_ || desktop == allDesktops;
}

const ClientWindow* WindowMirror::activeWindow() const {
    const auto* window = find(active_);
    return window != nullptr && window->managed ? window : nullptr;
}

std::uint64_t WindowMirror::shadowChanges(xcb_window_t id) const {
    const auto found = windows_.find(id);
    return found != windows_.end() ? found->second.shadowChanges : 0;
}

}  // namespace tessellon::x11
