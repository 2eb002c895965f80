#include "harness/logind.h"

#include <stdexcept>
#include <string_view>

#include <gio/gio.h>

namespace tessellon::desktop {
namespace {

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GVariantIter* iterator) const { g_variant_iter_free(iterator); }
};
using Value = std::unique_ptr<GVariant, Unref>;

constexpr int patienceMilliseconds = 20'000;

}  // namespace

struct Logind::Bus {
    explicit Bus(const std::string& address)
        : connection(g_dbus_connection_new_for_address_sync(
              address.c_str(),
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)) {
        if (connection == nullptr) {
            throw std::runtime_error("the private bus cannot be reached");
        }
    }
    ~Bus() { g_object_unref(connection); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Asks the bus itself.
    Value ask(const char* interface, const char* method, GVariant* arguments = nullptr) const {
        Value answer(g_dbus_connection_call_sync(
            connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", interface, method,
            arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
        if (!answer) {
            throw std::runtime_error(std::string("the private bus does not answer ") + method);
        }
        return answer;
    }

    GDBusConnection* connection;
};

Logind::Logind(const PrivateDesktop& desktop)
    : bus_(std::make_unique<Bus>(desktop.environment().at("DBUS_SYSTEM_BUS_ADDRESS"))) {
    constexpr guint32 doNotQueue = 4;
    bus_->ask("org.freedesktop.DBus", "RequestName",
              g_variant_new("(su)", "org.freedesktop.login1", doNotQueue));
}

Logind::~Logind() = default;

bool Logind::isHeard() {
    const auto answer = bus_->ask("org.freedesktop.DBus.Debug.Stats", "GetAllMatchRules");
    GVariantIter* every = nullptr;
    g_variant_get(answer.get(), "(a{sas})", &every);
    const std::unique_ptr<GVariantIter, Unref> rules(every);
    GVariantIter* ofOne = nullptr;
    bool heard = false;
    while (g_variant_iter_loop(rules.get(), "{&sas}", nullptr, &ofOne)) {
        const char* rule = nullptr;
        while (g_variant_iter_loop(ofOne, "&s", &rule)) {
            heard = heard || std::string_view(rule).find("PrepareForSleep") != std::string::npos;
        }
    }
    return heard;
}

void Logind::sleepAndWake() {
    for (const bool aboutToSleep : {true, false}) {
        g_dbus_connection_emit_signal(bus_->connection, nullptr, "/org/freedesktop/login1",
                                      "org.freedesktop.login1.Manager", "PrepareForSleep",
                                      g_variant_new("(b)", gboolean{aboutToSleep}), nullptr);
    }
    // Answered after the signals have been passed on.
    bus_->ask("org.freedesktop.DBus", "GetId");
}

}  // namespace tessellon::desktop
