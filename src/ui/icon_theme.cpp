#include "ui/icon_theme.h"

#include "platform/linux/base_directories.h"

#include <QFile>
#include <QFileInfo>
#include <QLatin1String>
#include <QSettings>
#include <QXmlStreamReader>
#include <algorithm>
#include <array>
#include <filesystem>

namespace tessellon {
namespace {

constexpr qint64 mostSettingsBytes = 1 << 20;

QString text(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

// With a slash at the end.
QStringList configurationFolders() {
    QStringList list;
    if (const auto own = configFolder()) {
        list << text(*own / "");
    }
    for (const auto& folder : systemConfigFolders()) {
        list << text(folder / "");
    }
    return list << QStringLiteral("/etc/");
}

// The folders of this name where data is shared, Flatpak's included, which are not in the variable
// of every session.
QStringList sharedFolders(const char* name) {
    QStringList list;
    for (const auto& folder : dataFolders()) {
        list << text(folder / name) << text(folder / "flatpak/exports/share" / name);
    }
    list << text(std::filesystem::path("/var/lib/flatpak/exports/share") / name);
    list.removeDuplicates();
    list.removeIf([](const QString& folder) { return !QFileInfo(folder).isDir(); });
    return list;
}

bool isInstalled(const QString& theme) {
    if (theme.isEmpty() || theme.contains(QChar(u'/'))) {
        return false;
    }
    const auto folders = iconThemeFolders();
    return std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
        return QFileInfo(folder + QChar(u'/') + theme + QStringLiteral("/index.theme")).isFile();
    });
}

bool isReadable(const QString& path) {
    const QFileInfo file(path);
    return file.isFile() && file.size() <= mostSettingsBytes;
}

/// Where a desktop keeps the name of the theme; `group` is empty for Xfce's kind of file.
struct Setting {
    const char* desktop;
    const char* file;
    const char* key;
};

constexpr std::array settings{
    Setting{"KDE", "kdeglobals", "Icons/Theme"},
    Setting{"LXQt", "lxqt/lxqt.conf", "icon_theme"},
    Setting{"XFCE", "xfce4/xfconf/xfce-perchannel-xml/xsettings.xml", "IconThemeName"},
    Setting{"", "gtk-3.0/settings.ini", "Settings/gtk-icon-theme-name"},
};

QString readProperty(const QString& path, QLatin1String name) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.attributes().value(QLatin1String("name")) == name) {
            return xml.attributes().value(QLatin1String("value")).toString();
        }
    }
    return {};
}

QString chosenTheme(const Setting& setting) {
    for (const auto& folder : configurationFolders()) {
        const auto path = folder + QLatin1String(setting.file);
        if (!isReadable(path)) {
            continue;
        }
        auto theme = path.endsWith(QLatin1String(".xml"))
                         ? readProperty(path, QLatin1String(setting.key))
                         : QSettings(path, QSettings::IniFormat).value(setting.key).toString();
        if (isInstalled(theme)) {
            return theme;
        }
    }
    return {};
}

}  // namespace

QStringList iconThemeFolders() {
    QStringList list;
    if (const auto home = homeFolder()) {
        list << text(*home / ".icons");
    }
    return list + sharedFolders("icons");
}

QStringList pictureFolders() {
    return sharedFolders("pixmaps");
}

QString iconThemeName() {
    // What another desktop was once set to counts less than what this one is set to.
    auto ordered = settings;
    const auto desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QChar(u':'));
    std::stable_partition(ordered.begin(), ordered.end(), [&](const Setting& setting) {
        return desktop.contains(QLatin1String(setting.desktop), Qt::CaseInsensitive);
    });
    // Unless a desktop claims the session, the setting that most of them keep comes first.
    if (!desktop.contains(QLatin1String(ordered.front().desktop), Qt::CaseInsensitive)) {
        std::rotate(ordered.begin(), ordered.end() - 1, ordered.end());
    }
    for (const auto& setting : ordered) {
        if (auto theme = chosenTheme(setting); !theme.isEmpty()) {
            return theme;
        }
    }
    auto general = generalIconTheme();
    return general.isEmpty() ? QStringLiteral("hicolor") : general;
}

QString generalIconTheme() {
    for (const auto* const theme : {"Adwaita", "breeze", "Papirus", "gnome"}) {
        if (isInstalled(QLatin1String(theme))) {
            return QLatin1String(theme);
        }
    }
    return {};
}

}  // namespace tessellon
