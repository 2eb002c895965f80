#include "platform/x11/window_reader.h"

#include "platform/x11/window_kind.h"

#include <algorithm>
#include <array>
#include <climits>
#include <string>
#include <string_view>
#include <utility>

#include <unistd.h>
#include <xcb/res.h>

namespace tessellon::x11 {
namespace {

using PropertyReply = Reply<xcb_get_property_reply_t>;

constexpr std::uint32_t propertyWords = 1024;  // of 4 bytes: the most that is read of any property
constexpr std::uint32_t iconicState = 3;       // ICCCM 4.1.3.1
constexpr int deepestNesting = 32;             // of a client's window below the root

/// Whether a client's machine is the one we run on; either name may be given with its domain.
bool isThisHost(std::string_view machine) {
    std::array<char, HOST_NAME_MAX + 1> buffer{};
    gethostname(buffer.data(), buffer.size() - 1);
    const auto withoutDomain = [](std::string_view name) { return name.substr(0, name.find('.')); };
    return withoutDomain(machine) == withoutDomain(buffer.data());
}

/// Whether the server tells the processes of its clients (X-Resource 1.2). To ask one that does not
/// know the extension would end the connection.
bool canTellProcesses(const Connection& connection) {
    const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_res_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    connection.countRoundTrip();
    const Reply<xcb_res_query_version_reply_t> version(xcb_res_query_version_reply(
        connection.xcb(), xcb_res_query_version_unchecked(connection.xcb(), 1, 2), nullptr));
    return version && (version->server_major > 1 ||
                       (version->server_major == 1 && version->server_minor >= 2));
}

}  // namespace

WindowReader::WindowReader(const Connection& connection)
    : connection_(connection), canTellProcesses_(canTellProcesses(connection)) {}

struct WindowReader::Cookies {
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_property_cookie_t frameExtents, shadowExtents, state, wmState, netName, name,
        windowClass, gtkApplicationId, type, transientFor, desktop, strutPartial, strut, hints,
        netPid, machine;
};

std::uint32_t WindowReader::facetOf(xcb_atom_t property) const {
    const std::array<std::pair<xcb_atom_t, std::uint32_t>, 16> table{{
        {connection_.atom(Atom::netFrameExtents), facet::frameExtents},
        {connection_.atom(Atom::gtkFrameExtents), facet::shadowExtents},
        {connection_.atom(Atom::netWmState), facet::state},
        {connection_.atom(Atom::wmState), facet::wmState},
        {connection_.atom(Atom::netWmName), facet::title},
        {XCB_ATOM_WM_NAME, facet::title},
        {XCB_ATOM_WM_CLASS, facet::windowClass},
        {connection_.atom(Atom::gtkApplicationId), facet::gtkApplicationId},
        {connection_.atom(Atom::netWmWindowType), facet::kind},
        {XCB_ATOM_WM_TRANSIENT_FOR, facet::kind},
        {connection_.atom(Atom::netWmDesktop), facet::desktop},
        {connection_.atom(Atom::netWmStrut), facet::strut},
        {connection_.atom(Atom::netWmStrutPartial), facet::strut},
        {XCB_ATOM_WM_NORMAL_HINTS, facet::hints},
        {connection_.atom(Atom::netWmPid), facet::process},
        {XCB_ATOM_WM_CLIENT_MACHINE, facet::process},
    }};
    const auto* found = std::find_if(table.begin(), table.end(),
                                     [&](const auto& row) { return row.first == property; });
    return found != table.end() ? found->second : 0;
}

WindowReader::Cookies WindowReader::send(const Job& job) const {
    auto* const xcb = connection_.xcb();
    const xcb_window_t id = job.window->id;
    const auto property = [&](xcb_atom_t name) {
        return xcb_get_property_unchecked(xcb, 0, id, name, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                          propertyWords);
    };
    const auto wants = [&](std::uint32_t facets) { return (job.facets & facets) != 0; };
    Cookies cookies{};
    if (wants(facet::geometry)) {
        cookies.geometry = xcb_get_geometry_unchecked(xcb, id);
        cookies.origin = xcb_translate_coordinates_unchecked(xcb, id, connection_.root(), 0, 0);
    }
    if (wants(facet::mapping)) {
        cookies.attributes = xcb_get_window_attributes_unchecked(xcb, id);
    }
    if (wants(facet::frameExtents) && frameWidths_ == FrameWidths::announced) {
        cookies.frameExtents = property(connection_.atom(Atom::netFrameExtents));
    }
    if (wants(facet::shadowExtents)) {
        cookies.shadowExtents = property(connection_.atom(Atom::gtkFrameExtents));
    }
    if (wants(facet::state)) {
        cookies.state = property(connection_.atom(Atom::netWmState));
    }
    if (wants(facet::wmState)) {
        cookies.wmState = property(connection_.atom(Atom::wmState));
    }
    if (wants(facet::title)) {
        cookies.netName = property(connection_.atom(Atom::netWmName));
        cookies.name = property(XCB_ATOM_WM_NAME);
    }
    if (wants(facet::windowClass)) {
        cookies.windowClass = property(XCB_ATOM_WM_CLASS);
    }
    if (wants(facet::gtkApplicationId)) {
        cookies.gtkApplicationId = property(connection_.atom(Atom::gtkApplicationId));
    }
    if (wants(facet::kind)) {
        cookies.type = property(connection_.atom(Atom::netWmWindowType));
        cookies.transientFor = property(XCB_ATOM_WM_TRANSIENT_FOR);
    }
    if (wants(facet::desktop)) {
        cookies.desktop = property(connection_.atom(Atom::netWmDesktop));
    }
    if (wants(facet::strut)) {
        cookies.strutPartial = property(connection_.atom(Atom::netWmStrutPartial));
        cookies.strut = property(connection_.atom(Atom::netWmStrut));
    }
    if (wants(facet::hints)) {
        cookies.hints = property(XCB_ATOM_WM_NORMAL_HINTS);
    }
    if (wants(facet::process)) {
        cookies.netPid = property(connection_.atom(Atom::netWmPid));
        cookies.machine = property(XCB_ATOM_WM_CLIENT_MACHINE);
    }
    return cookies;
}

void WindowReader::collect(Job& job, const Cookies& cookies) const {
    auto* const xcb = connection_.xcb();
    ClientWindow& window = *job.window;
    const auto property = [&](xcb_get_property_cookie_t cookie) {
        return PropertyReply(xcb_get_property_reply(xcb, cookie, nullptr));
    };
    const auto wants = [&](std::uint32_t facets) { return (job.facets & facets) != 0; };
    if (wants(facet::geometry)) {
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, cookies.geometry, nullptr));
        const Reply<xcb_translate_coordinates_reply_t> origin(
            xcb_translate_coordinates_reply(xcb, cookies.origin, nullptr));
        window.hasGeometry = geometry != nullptr && origin != nullptr;
        job.gone = !window.hasGeometry;
        if (window.hasGeometry) {
            const double border = geometry->border_width;
            window.border = geometry->border_width;
            window.client = {origin->dst_x - border, origin->dst_y - border,
                             geometry->width + 2 * border, geometry->height + 2 * border};
        }
    }
    if (wants(facet::mapping)) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, cookies.attributes, nullptr));
        window.viewable = attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    }
    if (wants(facet::frameExtents) && frameWidths_ == FrameWidths::announced) {
        window.frame = extents(rawProperty(property(cookies.frameExtents).get()));
    }
    if (wants(facet::shadowExtents)) {
        window.shadow = extents(rawProperty(property(cookies.shadowExtents).get()));
    }
    if (wants(facet::state)) {
        const auto reply = property(cookies.state);
        const auto states = cardinals(rawProperty(reply.get()));
        const auto has = [&](Atom name) {
            return std::find(states.begin(), states.end(), connection_.atom(name)) != states.end();
        };
        window.maximizedVert = has(Atom::netWmStateMaximizedVert);
        window.maximizedHorz = has(Atom::netWmStateMaximizedHorz);
        window.fullScreen = has(Atom::netWmStateFullscreen);
        window.hiddenState = has(Atom::netWmStateHidden);
        window.shaded = has(Atom::netWmStateShaded);
    }
    if (wants(facet::wmState)) {
        window.iconic = firstCardinal(rawProperty(property(cookies.wmState).get())) == iconicState;
    }
    if (wants(facet::title)) {
        const auto netName = property(cookies.netName);
        const auto name = property(cookies.name);
        window.title = text(rawProperty(netName.get()));
        if (window.title.empty()) {
            window.title = text(rawProperty(name.get()));
        }
    }
    if (wants(facet::windowClass)) {
        window.windowClass = x11::windowClass(rawProperty(property(cookies.windowClass).get()));
    }
    if (wants(facet::gtkApplicationId)) {
        window.gtkApplicationId = text(rawProperty(property(cookies.gtkApplicationId).get()));
    }
    if (wants(facet::kind)) {
        const auto type = property(cookies.type);
        const auto transientFor = property(cookies.transientFor);
        window.kind = windowKind(rawProperty(type.get()), rawProperty(transientFor.get()),
                                 [this](Atom name) { return connection_.atom(name); });
    }
    if (wants(facet::desktop)) {
        window.desktop = firstCardinal(rawProperty(property(cookies.desktop).get()));
    }
    if (wants(facet::strut)) {
        const auto partial = property(cookies.strutPartial);
        const auto plain = property(cookies.strut);
        window.strut = strut(rawProperty(partial.get()), rawProperty(plain.get()));
    }
    if (wants(facet::hints)) {
        window.hints = sizeHints(rawProperty(property(cookies.hints).get()));
    }
    if (wants(facet::process)) {
        const auto netPid = property(cookies.netPid);
        const auto machine = property(cookies.machine);
        const auto claimed = firstCardinal(rawProperty(netPid.get())).value_or(0);
        const auto host = text(rawProperty(machine.get()));
        job.isRemote = !host.empty() && !isThisHost(host);
        if (claimed > 0 && claimed <= INT_MAX && !host.empty() && !job.isRemote) {
            window.pid = static_cast<Pid>(claimed);
        } else {
            // A client of another machine, or one that tells nothing: its connection stands in for
            // its process, so that its windows still belong together.
            const auto step = xcb_get_setup(xcb)->resource_id_mask + 1;
            window.pid = -static_cast<Pid>(connection_.clientBase(window.id) / step) - 1;
        }
    }
}

void WindowReader::findTopLevels(std::span<Job> jobs) const {
    struct Climb {
        Job* job;
        xcb_window_t at;
        xcb_query_tree_cookie_t cookie;
    };
    std::vector<Climb> climbs;
    for (auto& job : jobs) {
        if ((job.facets & facet::parent) != 0 && !job.gone) {
            climbs.push_back({&job, job.window->id, {}});
        }
    }
    for (int level = 0; level < deepestNesting && !climbs.empty(); ++level) {
        for (auto& climb : climbs) {
            climb.cookie = xcb_query_tree_unchecked(connection_.xcb(), climb.at);
        }
        connection_.countRoundTrip();
        std::vector<Climb> higher;
        for (auto& climb : climbs) {
            const Reply<xcb_query_tree_reply_t> reply(
                xcb_query_tree_reply(connection_.xcb(), climb.cookie, nullptr));
            climb.job->window->topLevel = climb.at;
            if (reply && reply->parent != connection_.root() && reply->parent != XCB_NONE) {
                higher.push_back({climb.job, reply->parent, {}});
            }
        }
        climbs = std::move(higher);
    }
}

void WindowReader::measureFrames(std::span<Job> jobs) const {
    struct Question {
        ClientWindow* window;
        xcb_get_geometry_cookie_t frame;
    };
    std::vector<Question> questions;
    for (const auto& job : jobs) {
        if ((job.facets & (facet::geometry | facet::parent)) != 0 && !job.gone) {
            questions.push_back(
                {job.window, xcb_get_geometry_unchecked(connection_.xcb(), job.window->topLevel)});
        }
    }
    if (questions.empty()) {
        return;
    }
    connection_.countRoundTrip();
    for (const auto& [window, cookie] : questions) {
        const Reply<xcb_get_geometry_reply_t> frame(
            xcb_get_geometry_reply(connection_.xcb(), cookie, nullptr));
        if (!frame || window->topLevel == window->id) {
            window->frame.reset();
            continue;
        }
        const Rect outer{static_cast<double>(frame->x), static_cast<double>(frame->y),
                         frame->width + 2.0 * frame->border_width,
                         frame->height + 2.0 * frame->border_width};
        const Rect& client = window->client;
        const auto width = [](double difference) {
            return static_cast<std::int32_t>(std::max(difference, 0.0));
        };
        window->frame = Extents{.left = width(client.minX() - outer.minX()),
                                .right = width(outer.maxX() - client.maxX()),
                                .top = width(client.minY() - outer.minY()),
                                .bottom = width(outer.maxY() - client.maxY())};
    }
}

void WindowReader::readProcesses(std::span<Job> jobs) const {
    // The process behind a remote client's connection is a tunnel that it shares with others.
    const auto asks = [this](const Job& job) {
        return canTellProcesses_ && (job.facets & facet::process) != 0 && !job.gone &&
               !job.isRemote;
    };
    std::vector<xcb_res_client_id_spec_t> specs;
    for (const auto& job : jobs) {
        if (asks(job)) {
            specs.push_back({job.window->id, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
        }
    }
    if (specs.empty()) {
        return;
    }
    connection_.countRoundTrip();
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection_.xcb(),
        xcb_res_query_client_ids_unchecked(connection_.xcb(),
                                           static_cast<std::uint32_t>(specs.size()), specs.data()),
        nullptr));
    if (!reply) {
        return;
    }
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) == 0 ||
            xcb_res_client_id_value_value_length(ids.data) < 1) {
            continue;
        }
        const auto pid = static_cast<Pid>(*xcb_res_client_id_value_value(ids.data));
        const auto base = connection_.clientBase(ids.data->spec.client);
        for (auto& job : jobs) {
            if (asks(job) && pid > 0 && connection_.clientBase(job.window->id) == base) {
                job.window->pid = pid;
            }
        }
    }
}

void WindowReader::read(std::span<Job> jobs, const std::function<void()>& meanwhile) const {
    std::vector<Cookies> cookies;
    cookies.reserve(jobs.size());
    for (const auto& job : jobs) {
        cookies.push_back(send(job));
    }
    connection_.countRoundTrip();
    meanwhile();
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        collect(jobs[i], cookies[i]);
    }
    readProcesses(jobs);
    findTopLevels(jobs);
    if (frameWidths_ == FrameWidths::measured) {
        measureFrames(jobs);
    }
}

}  // namespace tessellon::x11
