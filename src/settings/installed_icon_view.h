// The picture of an application in lists.
#pragma once

#include <QIcon>
#include <QString>

namespace tessellon {

/// The icon that an installed application names, else the general one for programs; null when this
/// desktop has neither.
QIcon installedIcon(const QString& icon);

}  // namespace tessellon
