// The object that hosts of status notifier items read and press, with the properties and methods of
// the interface org.kde.StatusNotifierItem; for StatusNotifierItem alone.
// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/
#pragma once

#include "platform/tray_icon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <functional>

namespace tessellon {

/// A picture as items carry it: rows from the top, four bytes a pixel, alpha, red, green, blue, not
/// premultiplied. On the bus (iiay).
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// On the bus (sa(iiay)ss).
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps icon;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip);

/// The bytes that an item carries for the picture.
NotifierPixmap notifierPixmap(const IconImage& image);

/// It has no property Menu: some hosts ask even the path "/NO_DBUSMENU" for a menu, and show theirs
/// when none is there, instead of telling us of the button.
class StatusNotifierObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(QString IconThemePath READ iconThemePath CONSTANT)
    Q_PROPERTY(tessellon::NotifierPixmaps IconPixmap READ iconPixmap CONSTANT)
    Q_PROPERTY(QString OverlayIconName READ noName CONSTANT)
    Q_PROPERTY(tessellon::NotifierPixmaps OverlayIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ noName CONSTANT)
    Q_PROPERTY(tessellon::NotifierPixmaps AttentionIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ noName CONSTANT)
    Q_PROPERTY(tessellon::NotifierToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)

  public:
    /// `iconName` is looked up below `iconThemePath`; both may be empty. `pressed` is called for
    /// every way of pressing the item.
    StatusNotifierObject(QString iconName, QString iconThemePath, NotifierPixmaps icon,
                         std::function<void()> pressed);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("tessellon"); }
    QString title() const { return QStringLiteral("Tessellon"); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return iconName_; }
    QString iconThemePath() const { return iconThemePath_; }
    NotifierPixmaps iconPixmap() const { return icon_; }
    NotifierToolTip toolTip() const { return {iconName_, {}, title(), {}}; }
    /// Some hosts complain in their log about properties that are not there.
    QString noName() const { return {}; }
    NotifierPixmaps noPixmap() const { return {}; }
    bool itemIsMenu() const { return false; }

    // x and y are where the host thinks the item was pressed; hosts do not agree in what space.
    Q_SLOT void Activate(int /*x*/, int /*y*/) { pressed_(); }
    Q_SLOT void SecondaryActivate(int /*x*/, int /*y*/) { pressed_(); }
    Q_SLOT void ContextMenu(int /*x*/, int /*y*/) { pressed_(); }
    Q_SLOT void Scroll(int /*delta*/, const QString& /*orientation*/) {}

  private:
    QString iconName_;
    QString iconThemePath_;
    NotifierPixmaps icon_;
    std::function<void()> pressed_;
};

}  // namespace tessellon

Q_DECLARE_METATYPE(tessellon::NotifierPixmap)
Q_DECLARE_METATYPE(tessellon::NotifierToolTip)
