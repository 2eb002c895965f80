#include "harness/status_notifier_host.h"

#include <algorithm>
#include <future>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

#include <gio/gio.h>

namespace tessellon::desktop {
namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* itemPath = "/StatusNotifierItem";

constexpr const char* watcherXml =
    "<node><interface name='org.kde.StatusNotifierWatcher'>"
    "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
    "<method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>"
    "<property name='RegisteredStatusNotifierItems' type='as' access='read'/>"
    "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
    "<property name='ProtocolVersion' type='i' access='read'/>"
    "<signal name='StatusNotifierItemRegistered'><arg type='s'/></signal>"
    "<signal name='StatusNotifierItemUnregistered'><arg type='s'/></signal>"
    "<signal name='StatusNotifierHostRegistered'/>"
    "<signal name='StatusNotifierHostUnregistered'/>"
    "</interface></node>";

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};
using Value = std::unique_ptr<GVariant, Unref>;

constexpr int patienceMilliseconds = 20'000;

}  // namespace

// Items call at any time, so the list is kept in a thread that serves them.
struct StatusNotifierHost::Bus {
    explicit Bus(const std::string& address)
        : context(g_main_context_new()), loop(g_main_loop_new(context, FALSE)) {
        std::promise<bool> ready;
        auto isReady = ready.get_future();
        thread = std::thread([this, address, &ready] {
            g_main_context_push_thread_default(context);
            ready.set_value(open(address));
            g_main_loop_run(loop);
            close();
            g_main_context_pop_thread_default(context);
        });
        if (!isReady.get()) {
            end();
            throw std::runtime_error("the session bus does not let the test be its panel");
        }
    }
    ~Bus() {
        if (thread.joinable()) {
            end();
        }
    }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    bool open(const std::string& address);
    void close();
    void end();
    void add(const std::string& item);
    void remove(const std::string& name);
    Value call(const std::string& item, const char* interface, const char* method,
               GVariant* arguments) const;

    static void called(GDBusConnection* connection, const char* sender, const char* path,
                       const char* interface, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer self);
    static GVariant* property(GDBusConnection* connection, const char* sender, const char* path,
                              const char* interface, const char* name, GError** error,
                              gpointer self);
    static void ownerChanged(GDBusConnection* connection, const char* sender, const char* path,
                             const char* interface, const char* signal, GVariant* arguments,
                             gpointer self);

    GMainContext* context;
    GMainLoop* loop;
    GDBusConnection* connection = nullptr;
    std::thread thread;
    mutable std::mutex mutex;
    std::vector<std::string> items;
};

bool StatusNotifierHost::Bus::open(const std::string& address) {
    connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    if (connection == nullptr) {
        return false;
    }
    static const GDBusInterfaceVTable table{called, property, nullptr, {}};
    const std::unique_ptr<GDBusNodeInfo, Unref> info(
        g_dbus_node_info_new_for_xml(watcherXml, nullptr));
    g_dbus_connection_register_object(connection, watcherPath, info->interfaces[0], &table, this,
                                      nullptr, nullptr);
    g_dbus_connection_signal_subscribe(connection, "org.freedesktop.DBus", "org.freedesktop.DBus",
                                       "NameOwnerChanged", "/org/freedesktop/DBus", nullptr,
                                       G_DBUS_SIGNAL_FLAGS_NONE, ownerChanged, this, nullptr);
    constexpr guint32 doNotQueue = 4;
    constexpr guint32 primaryOwner = 1;
    const Value reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", watcherName, doNotQueue), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
    guint32 outcome = 0;
    if (reply) {
        g_variant_get(reply.get(), "(u)", &outcome);
    }
    return outcome == primaryOwner;
}

void StatusNotifierHost::Bus::close() {
    if (connection != nullptr) {
        g_dbus_connection_close_sync(connection, nullptr, nullptr);
        g_object_unref(connection);
    }
}

void StatusNotifierHost::Bus::end() {
    // From the loop, which may not have begun to run yet.
    g_main_context_invoke(
        context,
        [](gpointer running) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(running));
            return G_SOURCE_REMOVE;
        },
        loop);
    thread.join();
    g_main_loop_unref(loop);
    g_main_context_unref(context);
}

void StatusNotifierHost::Bus::add(const std::string& item) {
    const std::lock_guard lock(mutex);
    if (std::find(items.begin(), items.end(), item) == items.end()) {
        items.push_back(item);
    }
}

void StatusNotifierHost::Bus::remove(const std::string& name) {
    const std::lock_guard lock(mutex);
    items.erase(std::remove(items.begin(), items.end(), name), items.end());
}

void StatusNotifierHost::Bus::called(GDBusConnection* /*connection*/, const char* sender,
                                     const char* /*path*/, const char* /*interface*/,
                                     const char* method, GVariant* arguments,
                                     GDBusMethodInvocation* invocation, gpointer self) {
    if (std::string_view(method) == "RegisterStatusNotifierItem") {
        const char* item = nullptr;
        g_variant_get(arguments, "(&s)", &item);
        // A path means an object of whoever calls; ours looks at the usual path anyway.
        static_cast<Bus*>(self)->add(*item == '/' ? sender : item);
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

GVariant* StatusNotifierHost::Bus::property(GDBusConnection* /*connection*/, const char* /*sender*/,
                                            const char* /*path*/, const char* /*interface*/,
                                            const char* name, GError** /*error*/, gpointer self) {
    if (std::string_view(name) == "IsStatusNotifierHostRegistered") {
        return g_variant_new_boolean(TRUE);
    }
    if (std::string_view(name) == "ProtocolVersion") {
        return g_variant_new_int32(0);
    }
    const auto* const bus = static_cast<Bus*>(self);
    const std::lock_guard lock(bus->mutex);
    GVariantBuilder names;
    g_variant_builder_init(&names, G_VARIANT_TYPE_STRING_ARRAY);
    for (const auto& item : bus->items) {
        g_variant_builder_add(&names, "s", item.c_str());
    }
    return g_variant_builder_end(&names);
}

void StatusNotifierHost::Bus::ownerChanged(GDBusConnection* /*connection*/, const char* /*sender*/,
                                           const char* /*path*/, const char* /*interface*/,
                                           const char* /*signal*/, GVariant* arguments,
                                           gpointer self) {
    const char* name = nullptr;
    const char* before = nullptr;
    const char* now = nullptr;
    g_variant_get(arguments, "(&s&s&s)", &name, &before, &now);
    if (*now == '\0') {
        static_cast<Bus*>(self)->remove(name);
    }
}

Value StatusNotifierHost::Bus::call(const std::string& item, const char* interface,
                                    const char* method, GVariant* arguments) const {
    return Value(g_dbus_connection_call_sync(connection, item.c_str(), itemPath, interface, method,
                                             arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                             patienceMilliseconds, nullptr, nullptr));
}

StatusNotifierHost::StatusNotifierHost(const Environment& environment)
    : bus_(std::make_unique<Bus>(environment.at("DBUS_SESSION_BUS_ADDRESS"))) {}

StatusNotifierHost::~StatusNotifierHost() = default;

std::vector<std::string> StatusNotifierHost::items() const {
    const std::lock_guard lock(bus_->mutex);
    return bus_->items;
}

std::optional<std::string> StatusNotifierHost::text(const std::string& item,
                                                    const std::string& property) const {
    const auto reply = bus_->call(item, "org.freedesktop.DBus.Properties", "Get",
                                  g_variant_new("(ss)", itemInterface, property.c_str()));
    if (!reply) {
        return std::nullopt;
    }
    GVariant* inner = nullptr;
    g_variant_get(reply.get(), "(v)", &inner);
    const Value value(inner);
    if (!g_variant_is_of_type(inner, G_VARIANT_TYPE_STRING)) {
        return std::nullopt;
    }
    return g_variant_get_string(inner, nullptr);
}

std::vector<int> StatusNotifierHost::pixmapSizes(const std::string& item) const {
    const auto reply = bus_->call(item, "org.freedesktop.DBus.Properties", "Get",
                                  g_variant_new("(ss)", itemInterface, "IconPixmap"));
    std::vector<int> sizes;
    if (!reply) {
        return sizes;
    }
    GVariant* inner = nullptr;
    g_variant_get(reply.get(), "(v)", &inner);
    const Value pixmaps(inner);
    if (!g_variant_is_of_type(inner, G_VARIANT_TYPE("a(iiay)"))) {
        return sizes;
    }
    for (gsize i = 0; i < g_variant_n_children(inner); ++i) {
        const Value pixmap(g_variant_get_child_value(inner, i));
        gint32 width = 0;
        gint32 height = 0;
        g_variant_get(pixmap.get(), "(ii@ay)", &width, &height, nullptr);
        sizes.push_back(width);
    }
    return sizes;
}

bool StatusNotifierHost::activate(const std::string& item, int x, int y) const {
    return bus_->call(item, itemInterface, "Activate", g_variant_new("(ii)", x, y)) != nullptr;
}

bool StatusNotifierHost::secondaryActivate(const std::string& item, int x, int y) const {
    return bus_->call(item, itemInterface, "SecondaryActivate", g_variant_new("(ii)", x, y)) !=
           nullptr;
}

bool StatusNotifierHost::contextMenu(const std::string& item, int x, int y) const {
    return bus_->call(item, itemInterface, "ContextMenu", g_variant_new("(ii)", x, y)) != nullptr;
}

}  // namespace tessellon::desktop
