#include "stress/resources.h"

#include "harness/process.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>
#include <sstream>
#include <system_error>

#include <xcb/res.h>

namespace tessellon::stress {
namespace {

using desktop::Reply;

constexpr long bytesPerKiB = 1024;

std::string atomName(desktop::XSession& x, xcb_atom_t atom) {
    const Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(x.connection(), xcb_get_atom_name(x.connection(), atom), nullptr));
    if (!reply) {
        return "?";
    }
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

void addClient(desktop::XSession& x, xcb_window_t base, Figures& figures) {
    auto* const xcb = x.connection();
    const Reply<xcb_res_query_client_resources_reply_t> resources(
        xcb_res_query_client_resources_reply(xcb, xcb_res_query_client_resources(xcb, base),
                                             nullptr));
    const Reply<xcb_res_query_client_pixmap_bytes_reply_t> pixmaps(
        xcb_res_query_client_pixmap_bytes_reply(xcb, xcb_res_query_client_pixmap_bytes(xcb, base),
                                                nullptr));
    if (!resources || !pixmaps) {
        return;
    }
    ++figures["connections"];
    figures["pixmap KiB"] += static_cast<long>(pixmaps->bytes) / bytesPerKiB;
    const auto* const types = xcb_res_query_client_resources_types(resources.get());
    for (int i = 0; i < xcb_res_query_client_resources_types_length(resources.get()); ++i) {
        figures[atomName(x, types[i].resource_type)] += static_cast<long>(types[i].count);
    }
}

void addServerSide(desktop::XSession& x, pid_t process, Figures& figures) {
    auto* const xcb = x.connection();
    const Reply<xcb_res_query_clients_reply_t> clients(
        xcb_res_query_clients_reply(xcb, xcb_res_query_clients(xcb), nullptr));
    if (!clients) {
        return;
    }
    const auto* const list = xcb_res_query_clients_clients(clients.get());
    for (int i = 0; i < xcb_res_query_clients_clients_length(clients.get()); ++i) {
        if (x.processOf(list[i].resource_base) == process) {
            addClient(x, list[i].resource_base, figures);
        }
    }
}

long statusLine(pid_t process, const std::string& name) {
    std::istringstream status(
        desktop::fileContents("/proc/" + std::to_string(process) + "/status"));
    for (std::string word; status >> word;) {
        if (word == name) {
            long value = 0;
            status >> value;
            return value;
        }
    }
    return 0;
}

long descriptorsOf(pid_t process) {
    std::error_code error;
    const std::filesystem::directory_iterator entries("/proc/" + std::to_string(process) + "/fd",
                                                      error);
    return error ? 0 : std::distance(begin(entries), end(entries));
}

// What may be more at the end than after the warm-up without being a loss. One panel, its picture
// and what belongs to it may be up or kept at one moment and not at the other, for each display;
// records, arrangements and caches of the toolkit (glyphs, pictures of programs) take memory until
// they are full.
long allowance(const std::string& name) {
    static const Figures table{{"WINDOW", 6},      {"PIXMAP", 12},     {"GC", 6},
                               {"PICTURE", 12},    {"CURSOR", 4},      {"COLORMAP", 3},
                               {"RSS KiB", 6144},  {"threads", 1},     {"FONT", 0},
                               {"connections", 0}, {"descriptors", 4}, {"pixmap KiB", 8192}};
    constexpr long others = 8;
    const auto found = table.find(name);
    return found != table.end() ? found->second : others;
}

long median(std::vector<long>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

std::optional<Figures> measure(desktop::XSession& x, pid_t process) {
    Figures figures;
    addServerSide(x, process, figures);
    constexpr int readings = 3;
    long resident = std::numeric_limits<long>::max();
    for (int i = 0; i < readings; ++i) {
        resident = std::min(resident, statusLine(process, "VmRSS:"));
    }
    figures["RSS KiB"] = resident;
    figures["threads"] = statusLine(process, "Threads:");
    figures["descriptors"] = descriptorsOf(process);
    if (resident == 0 || figures["connections"] == 0) {
        return std::nullopt;
    }
    return figures;
}

void Growth::add(std::size_t action, Figures figures) {
    samples_.push_back({action, std::move(figures)});
}

std::vector<Growth::Line> Growth::judge() const {
    constexpr std::size_t fewestSamples = 40;
    if (samples_.size() < fewestSamples) {
        return {};
    }
    // A fifth of its life to warm up, and a fifth each to compare.
    const std::size_t fifth = samples_.size() / 5;
    std::set<std::string> names;
    for (const Sample& sample : samples_) {
        for (const auto& [name, value] : sample.figures) {
            names.insert(name);
        }
    }
    const auto valueIn = [](const Sample& sample, const std::string& name) {
        const auto found = sample.figures.find(name);
        return found != sample.figures.end() ? found->second : 0;
    };
    std::vector<Line> lines;
    for (const std::string& name : names) {
        std::vector<long> early;
        std::vector<long> late;
        for (std::size_t i = 0; i < fifth; ++i) {
            early.push_back(valueIn(samples_[fifth + i], name));
            late.push_back(valueIn(samples_[samples_.size() - 1 - i], name));
        }
        lines.push_back({name, median(early), median(late), allowance(name)});
    }
    return lines;
}

}  // namespace tessellon::stress
