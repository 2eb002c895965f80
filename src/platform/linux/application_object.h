// The object that desktops talk to when they start an application by its name on the bus, with the
// interface org.freedesktop.Application (XDG desktop entries, D-Bus activation); for
// SessionService alone.
#pragma once

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <functional>

namespace tessellon {

class ApplicationObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    /// `display` is where this instance runs: whoever asks for the instance of another display is
    /// refused.
    ApplicationObject(QString display, std::function<void()> activated);

    Q_SLOT void Activate(const QVariantMap& platformData);
    /// There are no documents to open; it brings up the program as Activate does.
    Q_SLOT void Open(const QStringList& uris, const QVariantMap& platformData);
    /// There are no actions but that.
    Q_SLOT void ActivateAction(const QString& name, const QVariantList& parameters,
                               const QVariantMap& platformData);

  private:
    QString display_;
    std::function<void()> activated_;
};

}  // namespace tessellon
