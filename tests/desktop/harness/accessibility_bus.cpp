#include "harness/accessibility_bus.h"

#include "harness/wait.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <gio/gio.h>

namespace tessellon::desktop {
namespace {

constexpr const char* accessibleInterface = "org.a11y.atspi.Accessible";
constexpr const char* actionInterface = "org.a11y.atspi.Action";
constexpr const char* valueInterface = "org.a11y.atspi.Value";
constexpr const char* textInterface = "org.a11y.atspi.Text";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* registry = "org.a11y.atspi.Registry";
constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";

// A program may go away with a question of ours.
constexpr int patienceMilliseconds = 2'000;
// A tree that goes deeper goes round in circles.
constexpr int greatestDepth = 40;

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
};
using Value = std::unique_ptr<GVariant, Unref>;
using Connection = std::unique_ptr<GDBusConnection, Unref>;

Connection connectTo(const std::string& address) {
    Connection connection(g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection) {
        throw std::runtime_error("no bus at " + address);
    }
    return connection;
}

/// Where an object is asked.
struct Place {
    std::string program;
    std::string path;
};

/// The answer, or null when there is none. Floating `arguments` are taken over.
Value ask(const Connection& connection, const Place& place, const char* interface,
          const char* method, GVariant* arguments = nullptr,
          GDBusCallFlags flags = G_DBUS_CALL_FLAGS_NONE) {
    return Value(g_dbus_connection_call_sync(
        connection.get(), place.program.c_str(), place.path.c_str(), interface, method, arguments,
        nullptr, flags, patienceMilliseconds, nullptr, nullptr));
}

Value property(const Connection& connection, const Place& place, const char* interface,
               const char* name) {
    const auto answer =
        ask(connection, place, propertiesInterface, "Get", g_variant_new("(ss)", interface, name));
    if (!answer) {
        return nullptr;
    }
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    return Value(value);
}

std::string stringOf(const Value& value) {
    return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)
               ? g_variant_get_string(value.get(), nullptr)
               : "";
}

std::vector<Place> childrenOf(const Connection& connection, const Place& place) {
    std::vector<Place> children;
    const auto answer = ask(connection, place, accessibleInterface, "GetChildren");
    if (!answer) {
        return children;
    }
    const Value list(g_variant_get_child_value(answer.get(), 0));
    GVariantIter each;
    g_variant_iter_init(&each, list.get());
    const char* program = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_loop(&each, "(&s&o)", &program, &path)) {
        children.push_back({program, path});
    }
    return children;
}

std::optional<Accessible> describeObject(const Connection& connection, const Place& place,
                                         int depth) {
    const auto role = ask(connection, place, accessibleInterface, "GetRoleName");
    const auto states = ask(connection, place, accessibleInterface, "GetState");
    if (!role || !states) {
        return std::nullopt;
    }
    Accessible object{place.program, place.path, {}, {}, 0, depth};
    object.name = stringOf(property(connection, place, accessibleInterface, "Name"));
    const char* roleName = nullptr;
    g_variant_get(role.get(), "(&s)", &roleName);
    object.role = roleName;
    const Value words(g_variant_get_child_value(states.get(), 0));
    GVariantIter each;
    g_variant_iter_init(&each, words.get());
    guint32 word = 0;
    for (unsigned shift = 0; shift < 64 && g_variant_iter_loop(&each, "u", &word) != FALSE;
         shift += 32) {
        object.states |= std::uint64_t{word} << shift;
    }
    return object;
}

void addTree(const Connection& connection, const Place& place, int depth,
             std::vector<Accessible>& objects) {
    const auto object = describeObject(connection, place, depth);
    if (!object || depth > greatestDepth) {
        return;
    }
    objects.push_back(*object);
    for (const auto& child : childrenOf(connection, place)) {
        addTree(connection, child, depth + 1, objects);
    }
}

Place placeOf(const Accessible& object) {
    return {object.program, object.path};
}

}  // namespace

struct AccessibilityBus::Bus {
    std::unique_ptr<Process> launcher;
    Connection connection;

    std::optional<Place> application(pid_t process) const {
        for (const auto& place : childrenOf(connection, {registry, rootPath})) {
            const auto answer = ask(connection, {"org.freedesktop.DBus", "/org/freedesktop/DBus"},
                                    "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                                    g_variant_new("(s)", place.program.c_str()));
            guint32 id = 0;
            if (answer) {
                g_variant_get(answer.get(), "(u)", &id);
            }
            if (id == static_cast<guint32>(process)) {
                return place;
            }
        }
        return std::nullopt;
    }
};

std::string describe(const std::vector<Accessible>& objects) {
    std::ostringstream lines;
    for (const auto& object : objects) {
        lines << std::string(2 * static_cast<std::size_t>(object.depth), ' ') << object.role << " “"
              << object.name << "”" << (object.is(AccessibleState::focusable) ? " ·" : "")
              << (object.is(AccessibleState::checked) ? " on" : "") << '\n';
    }
    return lines.str();
}

AccessibilityBus::AccessibilityBus(PrivateDesktop& desktop) : bus_(std::make_unique<Bus>()) {
    bus_->launcher =
        std::make_unique<Process>(std::vector<std::string>{"/usr/libexec/at-spi-bus-launcher",
                                                           "--launch-immediately", "--a11y=1"},
                                  desktop.processOptions("at-spi-bus-launcher"));
    const auto session = connectTo(desktop.environment().at("DBUS_SESSION_BUS_ADDRESS"));
    std::string address;
    const bool found = waitUntil([&] {
        // Whoever asks for it before it is there gets another one started by the session bus, which
        // does not have assistive technology turned on. Programs would not join.
        const auto answer = ask(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus",
                                "GetAddress", nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START);
        if (answer) {
            const char* said = nullptr;
            g_variant_get(answer.get(), "(&s)", &said);
            address = said;
        }
        return !address.empty();
    });
    if (!found) {
        throw std::runtime_error("the accessibility bus does not come");
    }
    const auto isEnabled =
        property(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Status", "IsEnabled");
    if (!isEnabled || g_variant_get_boolean(isEnabled.get()) == FALSE) {
        throw std::runtime_error("assistive technology is not turned on");
    }
    bus_->connection = connectTo(address);
    if (!waitUntil([&] {
            return ask(bus_->connection, {registry, rootPath}, accessibleInterface, "GetRole") !=
                   nullptr;
        })) {
        throw std::runtime_error("nobody lists the programs on the accessibility bus");
    }
}

AccessibilityBus::~AccessibilityBus() = default;

std::vector<Accessible> AccessibilityBus::tree(pid_t process) const {
    std::vector<Accessible> objects;
    if (const auto application = bus_->application(process)) {
        for (const auto& window : childrenOf(bus_->connection, *application)) {
            addTree(bus_->connection, window, 0, objects);
        }
    }
    return objects;
}

std::vector<Accessible> AccessibilityBus::tree(const Accessible& top) const {
    std::vector<Accessible> objects;
    addTree(bus_->connection, placeOf(top), 0, objects);
    return objects;
}

std::optional<Accessible> AccessibilityBus::find(pid_t process, std::string_view role,
                                                 std::string_view name) const {
    const auto objects = tree(process);
    const auto found = std::find_if(objects.begin(), objects.end(), [&](const auto& object) {
        return object.role == role && object.name == name && object.is(AccessibleState::showing);
    });
    return found != objects.end() ? std::optional(*found) : std::nullopt;
}

std::optional<Accessible> AccessibilityBus::waitFor(pid_t process, std::string_view role,
                                                    std::string_view name) const {
    std::optional<Accessible> found;
    waitUntil([&] {
        found = find(process, role, name);
        return found.has_value();
    });
    return found;
}

std::optional<Position> AccessibilityBus::middle(const Accessible& object) const {
    constexpr guint32 onScreen = 0;
    const auto answer = ask(bus_->connection, placeOf(object), "org.a11y.atspi.Component",
                            "GetExtents", g_variant_new("(u)", onScreen));
    if (!answer) {
        return std::nullopt;
    }
    gint32 x = 0;
    gint32 y = 0;
    gint32 width = 0;
    gint32 height = 0;
    g_variant_get(answer.get(), "((iiii))", &x, &y, &width, &height);
    return Position{x + width / 2, y + height / 2};
}

std::optional<double> AccessibilityBus::value(const Accessible& object) const {
    const auto value = property(bus_->connection, placeOf(object), valueInterface, "CurrentValue");
    return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_DOUBLE)
               ? std::optional(g_variant_get_double(value.get()))
               : std::nullopt;
}

bool AccessibilityBus::setValue(const Accessible& object, double value) const {
    return ask(bus_->connection, placeOf(object), propertiesInterface, "Set",
               g_variant_new("(ssv)", valueInterface, "CurrentValue",
                             g_variant_new_double(value))) != nullptr;
}

std::optional<std::string> AccessibilityBus::text(const Accessible& object) const {
    const auto answer = ask(bus_->connection, placeOf(object), textInterface, "GetText",
                            g_variant_new("(ii)", 0, -1));
    if (!answer) {
        return std::nullopt;
    }
    const char* text = nullptr;
    g_variant_get(answer.get(), "(&s)", &text);
    return text;
}

std::optional<int> AccessibilityBus::caret(const Accessible& object) const {
    const auto offset = property(bus_->connection, placeOf(object), textInterface, "CaretOffset");
    return offset && g_variant_is_of_type(offset.get(), G_VARIANT_TYPE_INT32)
               ? std::optional(g_variant_get_int32(offset.get()))
               : std::nullopt;
}

bool AccessibilityBus::setCaret(const Accessible& object, int offset) const {
    return ask(bus_->connection, placeOf(object), textInterface, "SetCaretOffset",
               g_variant_new("(i)", offset)) != nullptr;
}

std::vector<std::string> AccessibilityBus::actions(const Accessible& object) const {
    std::vector<std::string> names;
    const auto answer = ask(bus_->connection, placeOf(object), actionInterface, "GetActions");
    if (!answer) {
        return names;
    }
    const Value list(g_variant_get_child_value(answer.get(), 0));
    GVariantIter each;
    g_variant_iter_init(&each, list.get());
    const char* name = nullptr;
    while (g_variant_iter_loop(&each, "(&s&s&s)", &name, nullptr, nullptr)) {
        names.emplace_back(name);
    }
    return names;
}

bool AccessibilityBus::act(const Accessible& object, std::string_view action) const {
    const auto names = actions(object);
    const auto found =
        action.empty() ? names.begin() : std::find(names.begin(), names.end(), action);
    return found != names.end() &&
           ask(bus_->connection, placeOf(object), actionInterface, "DoAction",
               g_variant_new("(i)", static_cast<gint32>(found - names.begin()))) != nullptr;
}

std::optional<Accessible> AccessibilityBus::again(const Accessible& object) const {
    return describeObject(bus_->connection, placeOf(object), object.depth);
}

}  // namespace tessellon::desktop
