// The icons of installed applications.
#pragma once

#include <QIcon>
#include <QString>

namespace tessellon {

/// The icon that an application's desktop entry names: a name in the user's icon theme or one of
/// those it builds on (freedesktop.org Icon Theme), or the absolute path of a picture. Null when
/// there is none.
QIcon applicationIcon(const QString& icon);

}  // namespace tessellon
