#include "platform/linux/status_notifier_watcher.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QStringList>
#include <utility>

namespace tessellon {
namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");

QStringList hostSignals() {
    return {QStringLiteral("StatusNotifierHostRegistered"),
            QStringLiteral("StatusNotifierHostUnregistered")};
}

QVariant firstOf(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return {};
    }
    return reply.arguments().constFirst();
}

}  // namespace

StatusNotifierWatcher::StatusNotifierWatcher(const QDBusConnection& connection, Listeners listeners)
    : connection_(connection),
      listeners_(std::move(listeners)),
      keeper_(connection, watcherName, [this](const QString& owner) { setOwner(owner); }) {}

void StatusNotifierWatcher::add(const QString& service) {
    if (owner_.isEmpty()) {
        return;
    }
    auto message = QDBusMessage::createMethodCall(owner_, watcherPath, watcherName,
                                                  QStringLiteral("RegisterStatusNotifierItem"));
    message << service;
    connection_.call(message, QDBus::NoBlock);
}

// The owner is addressed by its own name on the bus: what an earlier one still says does not count.
void StatusNotifierWatcher::setOwner(const QString& owner) {
    if (!owner_.isEmpty()) {
        endListening();
    }
    owner_ = owner;
    ++questions_;
    setHasHost(false);
    if (owner_.isEmpty()) {
        return;
    }
    beginListening();
    listeners_.began();
    askForHost();
}

void StatusNotifierWatcher::beginListening() {
    for (const auto& signal : hostSignals()) {
        connection_.connect(owner_, watcherPath, watcherName, signal, this, SLOT(askForHost()));
    }
}

void StatusNotifierWatcher::endListening() {
    for (const auto& signal : hostSignals()) {
        connection_.disconnect(owner_, watcherPath, watcherName, signal, this, SLOT(askForHost()));
    }
}

// The signals tell of one host that came or went; the property tells whether any is there.
void StatusNotifierWatcher::askForHost() {
    auto message = QDBusMessage::createMethodCall(owner_, watcherPath,
                                                  QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    call(message, [this, question = ++questions_](const QDBusMessage& reply) {
        if (question == questions_) {
            setHasHost(qvariant_cast<QDBusVariant>(firstOf(reply)).variant().toBool());
        }
    });
}

void StatusNotifierWatcher::setHasHost(bool hasHost) {
    if (std::exchange(hasHost_, hasHost) != hasHost) {
        listeners_.hostChanged();
    }
}

void StatusNotifierWatcher::call(const QDBusMessage& message,
                                 std::function<void(const QDBusMessage&)> answered) {
    auto* const pending = new QDBusPendingCallWatcher(connection_.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                answered(finished->reply());
            });
}

}  // namespace tessellon
