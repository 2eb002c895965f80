#include "settings/installed_icon_view.h"

#include "ui/application_icon.h"

#include <QCache>

namespace tessellon {
namespace {

constexpr int mostKept = 300;

/// Images, which unlike pixmaps may outlive the application object.
QCache<QString, QImage>& kept() {
    static QCache<QString, QImage> pictures(mostKept);
    return pictures;
}

QString keyOf(const InstalledPicture& picture) {
    return QStringLiteral("%1@%2/%3").arg(picture.size).arg(picture.ratio).arg(picture.icon);
}

QImage drawn(const InstalledPicture& picture) {
    const QSize size(picture.size, picture.size);
    auto pixmap = installedIcon(picture.icon).pixmap(size, picture.ratio);
    auto image = pixmap.toImage();
    image.setDevicePixelRatio(pixmap.devicePixelRatio());
    return image.isNull() ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

QIcon installedIcon(const QString& icon) {
    const auto own = applicationIcon(icon);
    return own.isNull() ? applicationIcon(QStringLiteral("application-x-executable")) : own;
}

std::optional<QImage> InstalledPicture::known() const {
    const auto* const found = kept().object(keyOf(*this));
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

QImage InstalledPicture::find() const {
    if (auto found = known()) {
        return *found;
    }
    auto image = drawn(*this);
    kept().insert(keyOf(*this), new QImage(image));
    return image;
}

}  // namespace tessellon
