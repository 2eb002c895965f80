#include "platform/x11/x11_displays.h"

#include "base/text.h"
#include "base/uuid.h"
#include "platform/x11/backing_scales.h"
#include "platform/x11/edid.h"
#include "platform/x11/properties.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include <xcb/randr.h>

namespace tessellon::x11 {
namespace {

bool overlaps(double aMin, double aMax, double bMin, double bMax) {
    return std::min(aMax, bMax) > std::max(aMin, bMin);
}

/// Docks that leave less than that are wrong about what they need.
bool isRoomForWindows(const Rect& area) {
    constexpr double least = 100;  // pixels
    return area.width >= least && area.height >= least;
}

/// Where the sides of a rectangle are.
struct Sides {
    double left;
    double right;
    double top;
    double bottom;
};

Sides sidesOf(const Rect& rect) {
    return {rect.minX(), rect.maxX(), rect.minY(), rect.maxY()};
}

Rect rectOf(const Sides& sides) {
    return {sides.left, sides.top, sides.right - sides.left, sides.bottom - sides.top};
}

/// Whether a dock's reservation is meant for this monitor: the dock is on it, or, hidden somewhere
/// off screen, on none.
bool concerns(const ClientWindow& dock, const Rect& monitor, const Rect& root) {
    return dock.client.intersection(monitor).has_value() ||
           !dock.client.intersection(root).has_value();
}

}  // namespace

Rect visibleArea(const Rect& monitor, const Rect& root,
                 const std::vector<const ClientWindow*>& windows,
                 const std::optional<Rect>& workArea) {
    Sides room = sidesOf(monitor);
    Sides work = sidesOf(workArea.value_or(monitor));
    for (const auto* window : windows) {
        if (!window->strut || !concerns(*window, monitor, root)) {
            continue;
        }
        const Strut& strut = *window->strut;
        const auto spansY = [&](std::int64_t from, std::int64_t to) {
            return overlaps(static_cast<double>(from), static_cast<double>(to) + 1, monitor.minY(),
                            monitor.maxY());
        };
        const auto spansX = [&](std::int64_t from, std::int64_t to) {
            return overlaps(static_cast<double>(from), static_cast<double>(to) + 1, monitor.minX(),
                            monitor.maxX());
        };
        // Reservations are measured from the edges of the root window. One that reaches across the
        // whole monitor is not meant for it. Some window managers leave out of the work area what
        // is reserved beside the monitor, too, by the docks of a display that was switched off.
        if (const double edge = root.minX() + static_cast<double>(strut.left); strut.left > 0) {
            if (edge < monitor.maxX() && spansY(strut.leftStart, strut.leftEnd)) {
                room.left = std::max(room.left, edge);
            } else if (work.left == edge) {
                work.left = monitor.minX();
            }
        }
        if (const double edge = root.maxX() - static_cast<double>(strut.right); strut.right > 0) {
            if (edge > monitor.minX() && spansY(strut.rightStart, strut.rightEnd)) {
                room.right = std::min(room.right, edge);
            } else if (work.right == edge) {
                work.right = monitor.maxX();
            }
        }
        if (const double edge = root.minY() + static_cast<double>(strut.top); strut.top > 0) {
            if (edge < monitor.maxY() && spansX(strut.topStart, strut.topEnd)) {
                room.top = std::max(room.top, edge);
            } else if (work.top == edge) {
                work.top = monitor.minY();
            }
        }
        if (const double edge = root.maxY() - static_cast<double>(strut.bottom); strut.bottom > 0) {
            if (edge > monitor.minY() && spansX(strut.bottomStart, strut.bottomEnd)) {
                room.bottom = std::min(room.bottom, edge);
            } else if (work.bottom == edge) {
                work.bottom = monitor.maxY();
            }
        }
    }
    Rect area = rectOf(room);
    if (workArea) {
        area = area.intersection(rectOf(work)).value_or(area);
    }
    return isRoomForWindows(area) ? area : monitor;
}

X11Displays::X11Displays(Connection& connection, WindowMirror& mirror)
    : connection_(connection), mirror_(mirror) {
    const auto* extension = xcb_get_extension_data(connection_.xcb(), &xcb_randr_id);
    if (extension != nullptr && extension->present != 0) {
        connection_.countRoundTrip();
        const Reply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
            connection_.xcb(), xcb_randr_query_version_unchecked(connection_.xcb(), 1, 5),
            nullptr));
        hasRandr_ = version != nullptr &&
                    std::pair(version->major_version, version->minor_version) >= std::pair(1U, 5U);
        firstRandrEvent_ = extension->first_event;
    }
    if (hasRandr_) {
        xcb_randr_select_input(
            connection_.xcb(), connection_.root(),
            XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE | XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE);
    }
    rootSize_ = {static_cast<double>(connection_.screen().width_in_pixels),
                 static_cast<double>(connection_.screen().height_in_pixels)};
    listener_ = connection_.addStateListener([this](const auto& event) { onEvent(event); });
    announcer_ = connection_.idle().subscribe([this] {
        if (std::exchange(announce_, false)) {
            changed_.emit();
        }
    });
}

void X11Displays::onEvent(const xcb_generic_event_t& event) {
    const auto type = eventType(event);
    if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = eventAs<xcb_configure_notify_event_t>(event);
        if (notify.window != connection_.root()) {
            return;
        }
        rootSize_ = {static_cast<double>(notify.width), static_cast<double>(notify.height)};
    } else if (!hasRandr_ || (type != firstRandrEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY &&
                              type != firstRandrEvent_ + XCB_RANDR_NOTIFY)) {
        return;
    }
    monitors_.reset();
    announce_ = true;
}

Rect X11Displays::rootFrame() const {
    return {0, 0, rootSize_.width, rootSize_.height};
}

std::vector<Monitor> X11Displays::readMonitors() const {
    std::vector<Monitor> result;
    if (!hasRandr_) {
        Monitor whole;
        whole.id = connection_.root();
        whole.frame = rootFrame();
        whole.outputName = "screen";
        whole.primary = true;
        result.push_back(std::move(whole));
        return result;
    }
    auto* const xcb = connection_.xcb();
    const auto monitorsCookie = xcb_randr_get_monitors_unchecked(xcb, connection_.root(), 1);
    const auto resourcesCookie =
        xcb_randr_get_screen_resources_current_unchecked(xcb, connection_.root());
    connection_.countRoundTrip();
    const Reply<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(xcb, monitorsCookie, nullptr));
    const Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(xcb, resourcesCookie, nullptr));
    if (!reply) {
        return result;
    }
    std::map<xcb_randr_output_t, Size> scales;
    if (resources) {
        connection_.countRoundTrip();
        scales = backingScales(xcb, *resources);
    }
    struct Named {
        Monitor monitor;
        xcb_get_atom_name_cookie_t name;
        std::uint32_t output;
    };
    std::vector<Named> found;
    for (auto infos = xcb_randr_get_monitors_monitors_iterator(reply.get()); infos.rem > 0;
         xcb_randr_monitor_info_next(&infos)) {
        const auto* info = infos.data;
        Named named{};
        named.monitor.frame = {static_cast<double>(info->x), static_cast<double>(info->y),
                               static_cast<double>(info->width), static_cast<double>(info->height)};
        named.monitor.primary = info->primary != 0;
        named.monitor.id = info->name;
        named.name = xcb_get_atom_name_unchecked(xcb, info->name);
        named.output = xcb_randr_monitor_info_outputs_length(info) > 0
                           ? *xcb_randr_monitor_info_outputs(info)
                           : XCB_NONE;
        if (!named.monitor.frame.isEmpty()) {
            found.push_back(std::move(named));
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        return a.monitor.primary && !b.monitor.primary;
    });
    // Outputs that show the same picture are one screen to the user.
    std::vector<Named> distinct;
    for (auto& named : found) {
        if (std::none_of(distinct.begin(), distinct.end(), [&](const auto& other) {
                return other.monitor.frame == named.monitor.frame;
            })) {
            distinct.push_back(std::move(named));
        } else {
            xcb_discard_reply(xcb, named.name.sequence);
        }
    }
    std::vector<std::uint32_t> outputs;
    connection_.countRoundTrip();
    for (auto& named : distinct) {
        const Reply<xcb_get_atom_name_reply_t> name(
            xcb_get_atom_name_reply(xcb, named.name, nullptr));
        if (name) {
            named.monitor.outputName = sanitizedUtf8(
                {xcb_get_atom_name_name(name.get()),
                 static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get()))});
        }
        outputs.push_back(named.output);
        if (const auto scale = scales.find(named.output); scale != scales.end()) {
            named.monitor.backingScale = scale->second;
        }
        result.push_back(std::move(named.monitor));
    }
    readIdentity(result, outputs);
    return result;
}

void X11Displays::readIdentity(std::vector<Monitor>& monitors,
                               const std::vector<std::uint32_t>& outputs) const {
    constexpr std::uint32_t edidWords = 64;
    auto* const xcb = connection_.xcb();
    std::vector<std::optional<xcb_randr_get_output_property_cookie_t>> cookies;
    for (const auto output : outputs) {
        if (output == XCB_NONE) {
            cookies.emplace_back();
            continue;
        }
        cookies.emplace_back(
            xcb_randr_get_output_property_unchecked(xcb, output, connection_.atom(Atom::edid),
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, edidWords, 0, 0));
    }
    std::map<std::string, int> uses;
    std::set<std::string> sharesData;
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        if (!cookies[i]) {
            continue;
        }
        const Reply<xcb_randr_get_output_property_reply_t> reply(
            xcb_randr_get_output_property_reply(xcb, *cookies[i], nullptr));
        if (!reply || reply->format != 8) {
            continue;
        }
        const auto identity = monitorIdentity(
            {xcb_randr_get_output_property_data(reply.get()),
             static_cast<std::size_t>(xcb_randr_get_output_property_data_length(reply.get()))});
        if (identity) {
            monitors[i].uuid = identity->uuid;
            monitors[i].productName = identity->name;
            ++uses[identity->uuid];
            if (!identity->hasSerialNumber) {
                sharesData.insert(identity->uuid);
            }
        }
    }
    // All monitors of a type may have the same data, by which one of two could not be known again
    // when the other is unplugged; the connector tells them apart. Some makers give the same serial
    // number to all, which shows only while two of them are connected.
    for (auto& monitor : monitors) {
        if (monitor.uuid && (sharesData.contains(*monitor.uuid) || uses[*monitor.uuid] > 1)) {
            monitor.uuid = Uuid::fromName(*monitor.uuid + monitor.outputName).toString();
        }
    }
}

const std::vector<Monitor>& X11Displays::monitors() const {
    if (!monitors_) {
        monitors_ = readMonitors();
    }
    return *monitors_;
}

double X11Displays::primaryHeight() const {
    const auto& all = monitors();
    return all.empty() ? 0 : all.front().frame.height;
}

/// Whether the monitor is all there is. A single one that is not, since others are switched off,
/// has no part in what docks reserve beside it.
bool X11Displays::isWhole(const Monitor& monitor) const {
    return monitors().size() == 1 && monitor.frame == rootFrame();
}

std::vector<Screen> X11Displays::screens() const {
    mirror_.look();
    const auto& all = monitors();
    const auto docks = mirror_.reservingRoom();
    const double height = primaryHeight();
    const auto flipped = [&](const Rect& r) {
        return Rect{r.x, height - r.maxY(), r.width, r.height};
    };
    std::vector<Screen> result;
    result.reserve(all.size());
    for (const auto& monitor : all) {
        Screen screen;
        screen.id = monitor.id;
        screen.frame = flipped(monitor.frame);
        screen.visibleFrame = flipped(visibleArea(
            monitor.frame, rootFrame(), docks,
            isWhole(monitor) && mirror_.windowManagerAlive() ? mirror_.workArea() : std::nullopt));
        screen.uuid = monitor.uuid;
        screen.localizedName =
            monitor.productName.empty() ? monitor.outputName : monitor.productName;
        screen.backingScale = monitor.backingScale;
        result.push_back(std::move(screen));
    }
    return result;
}

std::optional<Screen> X11Displays::mainScreen() const {
    const auto all = screens();
    if (all.empty()) {
        return std::nullopt;
    }
    if (const auto* active = mirror_.activeWindow()) {
        const Rect frame = active->visibleFrame();
        const auto& known = monitors();
        double bestArea = 0;
        std::size_t best = 0;
        for (std::size_t i = 0; i < known.size(); ++i) {
            const auto common = known[i].frame.intersection(frame);
            if (common && common->area() > bestArea) {
                bestArea = common->area();
                best = i;
            }
        }
        return all[best];
    }
    return all.front();
}

}  // namespace tessellon::x11
