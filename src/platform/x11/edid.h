// What a monitor says about itself (VESA Enhanced EDID standard), as far as the program shows or
// keeps it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tessellon::x11 {

struct MonitorIdentity {
    /// A UUID in canonical text form made from the monitor's own data.
    std::string uuid;
    /// The product name for people; empty when the monitor tells none.
    std::string name;
    /// Whether the data has a serial number, without which all monitors of a type have the same.
    bool hasSerialNumber = false;
    bool operator==(const MonitorIdentity&) const = default;
};

/// Nothing for bytes that are no EDID base block.
std::optional<MonitorIdentity> monitorIdentity(std::span<const std::uint8_t> edid);

}  // namespace tessellon::x11
