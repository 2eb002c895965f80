#include "platform/linux/bus_name_owner.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <utility>

namespace tessellon {
namespace {

const auto busName = QStringLiteral("org.freedesktop.DBus");
const auto busPath = QStringLiteral("/org/freedesktop/DBus");

}  // namespace

BusNameOwner::BusNameOwner(const QDBusConnection& connection, const QString& name,
                           std::function<void(const QString& owner)> changed)
    : connection_(connection), changed_(std::move(changed)) {
    connection_.connect(busName, busPath, busName, QStringLiteral("NameOwnerChanged"),
                        QStringList{name}, QStringLiteral("sss"), this,
                        SLOT(ownerChanged(QString, QString, QString)));
    ask(name);
}

void BusNameOwner::ask(const QString& name) {
    auto message =
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("GetNameOwner"));
    message << name;
    auto* const pending = new QDBusPendingCallWatcher(connection_.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const auto arguments = finished->reply().arguments();
                if (!isKnown_ && !finished->isError() && !arguments.isEmpty()) {
                    setOwner(arguments[0].toString());
                }
            });
}

void BusNameOwner::ownerChanged(const QString& /*name*/, const QString& /*before*/,
                                const QString& now) {
    isKnown_ = true;
    setOwner(now);
}

void BusNameOwner::setOwner(const QString& owner) {
    if (std::exchange(owner_, owner) != owner) {
        changed_(owner_);
    }
}

}  // namespace tessellon
