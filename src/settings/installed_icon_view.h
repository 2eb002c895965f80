// The picture of an application in lists.
#pragma once

#include <QIcon>
#include <QImage>
#include <QString>
#include <optional>

namespace tessellon {

/// The icon that an installed application names, else the general one for programs; null when this
/// desktop has neither.
QIcon installedIcon(const QString& icon);

/// What a list that is shown often draws of an icon: `size` logical pixels for a screen of this
/// ratio. The pictures of late are kept, since finding and reading one may take milliseconds.
struct InstalledPicture {
    QString icon;
    int size = 0;
    double ratio = 1;

    /// The picture, null when there is none; nothing while it is not among those that are kept.
    std::optional<QImage> known() const;
    /// The picture, looked for if need be; null when there is none.
    QImage find() const;
};

}  // namespace tessellon
