#include "platform/linux/session_service.h"

#include "platform/linux/application_object.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/bus_name.h"
#include "platform/linux/bus_wait.h"

#include <QDBusConnection>
#include <QString>
#include <chrono>
#include <utility>

namespace tessellon {
namespace {

GVariant* activateArguments(const std::string& display) {
    GVariantBuilder platformData;
    g_variant_builder_init(&platformData, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&platformData, "{sv}", platformDataDisplay,
                          g_variant_new_string(display.c_str()));
    return g_variant_new("(a{sv})", &platformData);
}

}  // namespace

struct SessionService::OnBus {
    explicit OnBus(SessionService& service)
        : object(QString::fromStdString(service.display_),
                 [&service] { service.activated_.emit(); }),
          bus(Bus::session, [this](QDBusConnection connection) {
              // In this order: whoever finds the name finds the object.
              connection.registerObject(QString::fromUtf8(servicePath), &object,
                                        QDBusConnection::ExportAllSlots);
              name = std::make_unique<BusName>(connection, QString::fromUtf8(serviceName),
                                               BusName::WhenTaken::queue, nullptr);
          }) {}

    ApplicationObject object;
    std::unique_ptr<BusName> name;
    BusConnection bus;
};

SessionService::SessionService(std::string display) : display_(std::move(display)) {}

SessionService::~SessionService() = default;

void SessionService::start() {
    if (!onBus_) {
        onBus_ = std::make_unique<OnBus>(*this);
    }
}

bool activateRunningInstance(const std::string& display, Seconds limit) {
    BusWait wait;
    const TimeLimit timeLimit(wait, limit);
    const auto bus = openBus(busAddress(Bus::session), wait);
    if (!bus) {
        return false;
    }
    auto* const answer = g_dbus_connection_call_sync(
        bus.get(), serviceName, servicePath, "org.freedesktop.Application", "Activate",
        activateArguments(display), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
        static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(limit).count()), wait.get(),
        nullptr);
    if (answer == nullptr) {
        return false;
    }
    g_variant_unref(answer);
    return true;
}

}  // namespace tessellon
