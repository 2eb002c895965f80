// Which icons the user's desktop shows for applications, and where they lie.
#pragma once

#include <QString>
#include <QStringList>

namespace tessellon {

/// The folders of icon themes, the user's own first (freedesktop.org Icon Theme).
QStringList iconThemeFolders();

/// The folders of pictures that belong to no theme.
QStringList pictureFolders();

/// The icon theme that the user's desktop is set to, when it is installed; else one that is, and
/// "hicolor" where there is none.
QString iconThemeName();

/// An installed theme with icons for most applications; empty when there is none.
QString generalIconTheme();

}  // namespace tessellon
