#include "platform/linux/status_notifier_object.h"

#include <QDBusMetaType>
#include <QtEndian>
#include <algorithm>
#include <cstdint>
#include <utility>

namespace tessellon {
namespace {

constexpr std::uint32_t opaque = 255;

std::uint32_t channel(std::uint32_t pixel, int shift) {
    return pixel >> shift & 0xFF;
}

std::uint32_t withoutPremultiplication(std::uint32_t pixel) {
    const auto alpha = channel(pixel, 24);
    if (alpha == 0) {
        return 0;
    }
    const auto restored = [&](int shift) {
        return std::min(opaque, (channel(pixel, shift) * opaque + alpha / 2) / alpha) << shift;
    };
    return alpha << 24 | restored(16) | restored(8) | restored(0);
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

NotifierPixmap notifierPixmap(const IconImage& image) {
    NotifierPixmap pixmap{image.size, image.size, {}};
    constexpr qsizetype bytesPerPixel = sizeof(std::uint32_t);
    pixmap.bytes.reserve(bytesPerPixel * static_cast<qsizetype>(image.pixels.size()));
    for (const auto pixel : image.pixels) {
        const auto bigEndian = qToBigEndian(withoutPremultiplication(pixel));
        pixmap.bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
    }
    return pixmap;
}

StatusNotifierObject::StatusNotifierObject(QString iconName, QString iconThemePath,
                                           NotifierPixmaps icon, std::function<void()> pressed)
    : iconName_(std::move(iconName)),
      iconThemePath_(std::move(iconThemePath)),
      icon_(std::move(icon)),
      pressed_(std::move(pressed)) {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

}  // namespace tessellon
