#include "harness/monitors.h"

#include "harness/wait.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <stdexcept>
#include <utility>

#include <xcb/randr.h>
#include <xcb/xcbext.h>

namespace tessellon::desktop {
namespace {

constexpr Frame usualScreen{0, 0, 1920, 1080};

std::vector<Monitor> named(const std::vector<Frame>& frames, const std::string& prefix,
                           char firstName) {
    std::vector<Monitor> monitors;
    for (const Frame& frame : frames) {
        const auto index = static_cast<char>(monitors.size());
        monitors.push_back({prefix + static_cast<char>(firstName + index), frame});
    }
    return monitors;
}

std::string modeName(const Frame& frame) {
    return std::to_string(frame.width) + "x" + std::to_string(frame.height);
}

/// With an output, or none. The library's own function for this request mistakes its length.
void setMonitor(XSession& x, xcb_randr_monitor_info_t info, xcb_randr_output_t output) {
    static const xcb_protocol_request_t setMonitorRequest{
        .count = 1, .ext = &xcb_randr_id, .opcode = XCB_RANDR_SET_MONITOR, .isvoid = 1};
    info.nOutput = output != XCB_NONE ? 1 : 0;
    std::array<std::uint32_t, 9> request{};
    request[1] = x.root();
    static_assert(sizeof(info) == 6 * sizeof(std::uint32_t));
    std::memcpy(&request[2], &info, sizeof(info));
    request[8] = output;
    const std::size_t length = sizeof(std::uint32_t) * (info.nOutput + 8U);
    // The library keeps notes of its own in the two elements before the first.
    std::array<iovec, 3> parts{};
    parts[2] = {request.data(), length};
    const auto sequence =
        xcb_send_request(x.connection(), XCB_REQUEST_CHECKED, &parts[2], &setMonitorRequest);
    const Reply<xcb_generic_error_t> refusal(xcb_request_check(x.connection(), {sequence}));
    if (refusal) {
        throw std::runtime_error("the server refuses a monitor");
    }
}

}  // namespace

const Monitors Monitors::one{};
const Monitors Monitors::twoSideBySide{Kind::described,
                                       {{"L", {0, 0, 960, 1080}}, {"R", {960, 0, 960, 1080}}}};

Monitors Monitors::described(const std::vector<Frame>& frames) {
    return {Kind::described, named(frames, "", 'A')};
}

Monitors Monitors::outputs(const std::vector<Frame>& frames) {
    return {Kind::outputs, named(frames, "DUMMY", '0')};
}

Frame Monitors::bounds() const {
    if (all.empty()) {
        return usualScreen;
    }
    Frame result;
    for (const auto& monitor : all) {
        result.width = std::max(result.width, monitor.frame.x + monitor.frame.width);
        result.height = std::max(result.height, monitor.frame.y + monitor.frame.height);
    }
    return result;
}

MonitorCables::MonitorCables(XSession& session, Monitors monitors, ProcessOptions processOptions)
    : x_(session), kind_(monitors.kind), processOptions_(std::move(processOptions)) {
    for (auto& monitor : monitors.all) {
        cables_.push_back({std::move(monitor)});
    }
}

void MonitorCables::show() {
    if (kind_ == Monitors::Kind::outputs) {
        switchOutputs();
    } else if (!cables_.empty()) {
        describe();
    }
}

void MonitorCables::unplug(std::string_view name) {
    connect(name, false);
}

void MonitorCables::plug(std::string_view name) {
    connect(name, true);
}

void MonitorCables::connect(std::string_view name, bool connected) {
    const auto cable = std::find_if(cables_.begin(), cables_.end(), [&](const Cable& candidate) {
        return candidate.monitor.name == name;
    });
    if (cable == cables_.end()) {
        throw std::out_of_range("no monitor is called " + std::string(name));
    }
    cable->connected = connected;
    show();
}

// The one output of the server belongs to the first monitor, or the server would go on to show a
// monitor of its own for it. Nobody sees the states in between.
void MonitorCables::describe() {
    auto* const xcb = x_.connection();
    xcb_grab_server(xcb);
    const Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            xcb, xcb_randr_get_screen_resources_current(xcb, x_.root()), nullptr));
    const Reply<xcb_randr_get_monitors_reply_t> before(
        xcb_randr_get_monitors_reply(xcb, xcb_randr_get_monitors(xcb, x_.root(), 1), nullptr));
    if (!resources || !before) {
        throw std::runtime_error("the server tells nothing of its monitors");
    }
    std::set<xcb_atom_t> described;
    for (auto known = xcb_randr_get_monitors_monitors_iterator(before.get()); known.rem > 0;
         xcb_randr_monitor_info_next(&known)) {
        if (known.data->automatic == 0) {
            described.insert(known.data->name);
        }
    }
    for (const auto& cable : cables_) {
        if (const auto name = x_.atom(cable.monitor.name); described.contains(name)) {
            xcb_randr_delete_monitor(xcb, x_.root(), name);
        }
    }
    xcb_randr_output_t output = *xcb_randr_get_screen_resources_current_outputs(resources.get());
    for (const auto& cable : cables_) {
        if (!cable.connected) {
            continue;
        }
        const Frame& frame = cable.monitor.frame;
        xcb_randr_monitor_info_t info{};
        info.name = x_.atom(cable.monitor.name);
        info.primary = &cable == cables_.data() ? 1 : 0;
        info.x = static_cast<std::int16_t>(frame.x);
        info.y = static_cast<std::int16_t>(frame.y);
        info.width = static_cast<std::uint16_t>(frame.width);
        info.height = static_cast<std::uint16_t>(frame.height);
        // At a quarter of a millimetre a pixel.
        info.width_in_millimeters = static_cast<std::uint32_t>(frame.width) / 4;
        info.height_in_millimeters = static_cast<std::uint32_t>(frame.height) / 4;
        setMonitor(x_, info, std::exchange(output, XCB_NONE));
    }
    xcb_ungrab_server(xcb);
    x_.sync();
}

void MonitorCables::switchOutputs() {
    const auto run = [&](const std::vector<std::string>& arguments) {
        Process process(arguments, processOptions_);
        const auto end = process.waitForEnd(patience);
        if (end != ProcessEnd{.exitCode = EXIT_SUCCESS, .signal = std::nullopt}) {
            throw std::runtime_error("the outputs cannot be switched");
        }
    };
    std::vector<std::string> all{"xrandr"};
    for (const auto& [monitor, connected] : cables_) {
        all.insert(all.end(), {"--output", monitor.name});
        if (!connected) {
            all.emplace_back("--off");
            continue;
        }
        run({"xrandr", "--addmode", monitor.name, modeName(monitor.frame)});
        all.insert(all.end(),
                   {"--mode", modeName(monitor.frame), "--pos",
                    std::to_string(monitor.frame.x) + "x" + std::to_string(monitor.frame.y)});
        if (&monitor == &cables_.front().monitor) {
            all.emplace_back("--primary");
        }
    }
    run(all);
    // The driver takes an output for connected while it shows something, but finds that out only
    // when it is asked. Many programs think nothing of an output before that.
    run({"xrandr", "--query"});
}

}  // namespace tessellon::desktop
