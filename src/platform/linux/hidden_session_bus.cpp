#include "platform/linux/hidden_session_bus.h"

#include <QDBusConnection>
#include <cstdlib>

namespace tessellon {
namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";

}  // namespace

HiddenSessionBus::HiddenSessionBus() {
    if (const char* address = std::getenv(variable); address != nullptr) {
        address_ = address;
    }
    // Without the variable the toolkit would look in the well-known place, or start a bus. There is
    // no transport of this name.
    setenv(variable, "disabled:", 1);
}

HiddenSessionBus::~HiddenSessionBus() {
    // The toolkit keeps what it gets here, and the library below it reads the variable only once.
    QDBusConnection::sessionBus();
    if (address_) {
        setenv(variable, address_->c_str(), 1);
    } else {
        unsetenv(variable);
    }
}

}  // namespace tessellon
