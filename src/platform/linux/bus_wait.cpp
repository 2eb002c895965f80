#include "platform/linux/bus_wait.h"

#include "platform/linux/environment.h"
#include "platform/linux/glib_text.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <stop_token>

namespace tessellon {
namespace {

constexpr const char* systemBusAddress = "unix:path=/var/run/dbus/system_bus_socket";

/// Whether the bus itself answers a call, which has no arguments.
bool answers(GDBusConnection* connection, const char* method, const BusWait& wait) {
    GVariant* const answer = g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
        nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, wait.get(), nullptr);
    if (answer == nullptr) {
        return false;
    }
    g_variant_unref(answer);
    return true;
}

}  // namespace

std::string busAddress(Bus bus) {
    if (bus == Bus::system) {
        auto named = environment("DBUS_SYSTEM_BUS_ADDRESS");
        return named.empty() ? systemBusAddress : named;
    }
    auto named = environment("DBUS_SESSION_BUS_ADDRESS");
    const auto runtimeFolder = environment("XDG_RUNTIME_DIR");
    if (!named.empty() || !runtimeFolder.starts_with('/')) {
        return named;
    }
    const auto socket = std::filesystem::path(runtimeFolder) / "bus";
    std::error_code error;
    if (!std::filesystem::is_socket(socket, error)) {
        return {};
    }
    const GText escaped(g_dbus_address_escape_value(socket.c_str()));
    return std::string("unix:path=") + escaped.get();
}

TimeLimit::TimeLimit(BusWait& wait, Seconds limit)
    : thread_([&wait, limit](const std::stop_token& stop) {
          std::mutex mutex;
          std::unique_lock lock(mutex);
          std::condition_variable_any stopped;
          stopped.wait_for(lock, stop, limit, [] { return false; });
          if (!stop.stop_requested()) {
              wait.giveUp();
          }
      }) {}

OpenBus openBus(const std::string& address, const BusWait& wait) {
    if (address.empty()) {
        return nullptr;
    }
    // The library would say Hello by itself, but wait for the answer whatever `wait` says.
    OpenBus bus(g_dbus_connection_new_for_address_sync(
        address.c_str(), G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT, nullptr, wait.get(),
        nullptr));
    if (!bus || !answers(bus.get(), "Hello", wait) || !answers(bus.get(), "GetId", wait)) {
        return nullptr;
    }
    return bus;
}

BusProbe::BusProbe(Bus bus, Seconds limit)
    : thread_([this, address = busAddress(bus), limit] {
          const TimeLimit timeLimit(wait_, limit);
          openBus(address, wait_);
      }) {}

bool BusProbe::isSilent() {
    if (thread_.joinable()) {
        thread_.join();
    }
    return g_cancellable_is_cancelled(wait_.get()) != 0;
}

}  // namespace tessellon
