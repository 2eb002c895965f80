#include "platform/linux/application_object.h"

#include "platform/linux/session_service.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QMetaObject>
#include <utility>

namespace tessellon {

ApplicationObject::ApplicationObject(QString display, std::function<void()> activated)
    : display_(std::move(display)), activated_(std::move(activated)) {}

void ApplicationObject::Activate(const QVariantMap& platformData) {
    const auto wanted = platformData.value(QString::fromUtf8(platformDataDisplay)).toString();
    if (!wanted.isEmpty() && wanted != display_) {
        if (calledFromDBus()) {
            sendErrorReply(QDBusError::NotSupported,
                           QStringLiteral("This instance runs on another display."));
        }
        return;
    }
    // The one who asked is answered before anything opens.
    QMetaObject::invokeMethod(
        this, [this] { activated_(); }, Qt::QueuedConnection);
}

void ApplicationObject::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationObject::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                       const QVariantMap& /*platformData*/) {
    if (calledFromDBus()) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action ") + name);
    }
}

}  // namespace tessellon
