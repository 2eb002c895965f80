#include "ui/application_icon.h"

#include "ui/icon_theme.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QLatin1String>
#include <QPixmap>
#include <algorithm>

namespace tessellon {
namespace {

// What is far from an icon is not worth the time that it would take to read.
constexpr qint64 mostBytes = 8 << 20;
constexpr int longestSide = 2048;

// The largest that an icon is shown, in device pixels.
constexpr int largestShown = 128;

// The toolkit is not to follow the desktop's settings elsewhere; for icons it has to.
void prepareThemes() {
    static const bool prepared = [] {
        QIcon::setThemeSearchPaths(iconThemeFolders());
        QIcon::setFallbackSearchPaths(pictureFolders());
        QIcon::setThemeName(iconThemeName());
        QIcon::setFallbackThemeName(generalIconTheme());
        return true;
    }();
    static_cast<void>(prepared);
}

QIcon fromFile(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > mostBytes) {
        return {};
    }
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty() || std::max(size.width(), size.height()) > longestSide) {
        return {};
    }
    const bool isDrawing = reader.format().startsWith("svg");
    if (isDrawing || std::max(size.width(), size.height()) > largestShown) {
        reader.setScaledSize(size.scaled(largestShown, largestShown, Qt::KeepAspectRatio));
    }
    const QImage picture = reader.read();
    return picture.isNull() ? QIcon() : QIcon(QPixmap::fromImage(picture));
}

QIcon fromTheme(const QString& name) {
    const auto icon = QIcon::fromTheme(name);
    // A file that cannot be read is found out only when it is drawn.
    constexpr int usualSize = 32;
    return icon.isNull() || icon.pixmap(usualSize).isNull() ? QIcon() : icon;
}

}  // namespace

QIcon applicationIcon(const QString& icon) {
    if (QDir::isAbsolutePath(icon)) {
        return fromFile(icon);
    }
    if (icon.isEmpty() || icon.contains(QChar(u'/'))) {
        return {};
    }
    prepareThemes();
    auto found = fromTheme(icon);
    if (!found.isNull()) {
        return found;
    }
    // Entries name files of a theme against the standard, too.
    for (const auto extension :
         {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (icon.endsWith(extension)) {
            return fromTheme(icon.chopped(extension.size()));
        }
    }
    return {};
}

}  // namespace tessellon
