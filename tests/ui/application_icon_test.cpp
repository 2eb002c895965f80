// The icons of applications, found in a theme, in a folder of pictures or at a path.
#include "ui/application_icon.h"

#include "ui/icon_theme.h"
#include "ui_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace tessellon {
namespace {

void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void writePicture(const QString& path, const QColor& color, const QSize& size = {48, 48}) {
    QDir().mkpath(QFileInfo(path).path());
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    ASSERT_TRUE(image.save(path, "PNG"));
}

QColor colorOf(const QIcon& icon) {
    const auto image = icon.pixmap(18, 18).toImage();
    return image.isNull() ? QColor() : image.pixelColor(image.width() / 2, image.height() / 2);
}

/// A home of its own, in which the theme of the desktop is "Blue" and builds on "Green". The
/// toolkit looks for themes once in a process, so all of it lies in one case.
class ApplicationIcon : public UiTest {
  protected:
    ApplicationIcon() {
        for (const auto& [variable, folder] : {std::pair{"HOME", ""},
                                               {"XDG_CONFIG_HOME", "/config"},
                                               {"XDG_DATA_HOME", "/data"},
                                               {"XDG_DATA_DIRS", "/shared"},
                                               {"XDG_CONFIG_DIRS", "/etc"}}) {
            qputenv(variable, (home.path() + folder).toUtf8());
        }
        const QByteArray apps = "Directories=48/apps\n[48/apps]\nSize=48\nType=Fixed\n";
        write(path("/shared/icons/Blue/index.theme"),
              "[Icon Theme]\nName=Blue\nInherits=Green\n" + apps);
        write(path("/data/icons/Green/index.theme"), "[Icon Theme]\nName=Green\n" + apps);
        write(path("/shared/icons/hicolor/index.theme"), "[Icon Theme]\nName=Hicolor\n" + apps);
    }

    QString path(const char* below) const { return home.path() + below; }

    QTemporaryDir home;
};

TEST_F(ApplicationIcon, TheThemeIsTheOneThatTheDesktopIsSetTo) {
    qputenv("XDG_CURRENT_DESKTOP", "");
    EXPECT_EQ(iconThemeName(), "hicolor");
    write(path("/config/gtk-3.0/settings.ini"), "[Settings]\ngtk-icon-theme-name=Blue\n");
    write(path("/config/kdeglobals"), "[Icons]\nTheme=Green\n");
    EXPECT_EQ(iconThemeName(), "Blue");
    qputenv("XDG_CURRENT_DESKTOP", "X-Own:KDE");
    EXPECT_EQ(iconThemeName(), "Green");
    write(path("/config/kdeglobals"), "[Icons]\nTheme=Gone\n");
    EXPECT_EQ(iconThemeName(), "Blue") << "a theme that is not installed";
    qputenv("XDG_CURRENT_DESKTOP", "XFCE");
    const auto* const xfce = "/config/xfce4/xfconf/xfce-perchannel-xml/xsettings.xml";
    write(path(xfce),
          R"(<channel name="xsettings"><property name="Net" type="empty"><property
             name="IconThemeName" type="string" value="Green"/></property></channel>)");
    EXPECT_EQ(iconThemeName(), "Green");
    write(path(xfce), "<channel><property name=");
    EXPECT_EQ(iconThemeName(), "Blue");
}

TEST_F(ApplicationIcon, AreFoundByNameAndByPath) {
    write(path("/config/gtk-3.0/settings.ini"), "[Settings]\ngtk-icon-theme-name=Blue\n");
    writePicture(path("/shared/icons/Blue/48/apps/org.editor.Editor.png"), Qt::blue);
    writePicture(path("/data/icons/Green/48/apps/inherited.png"), Qt::green);
    writePicture(path("/shared/icons/hicolor/48/apps/everywhere.png"), Qt::red);
    write(path("/shared/icons/hicolor/48/apps/drawing.svg"),
          R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 8 8">
             <rect width="8" height="8" fill="#ff00ff"/></svg>)");
    write(path("/shared/icons/hicolor/48/apps/broken.png"), "not a picture");
    writePicture(path("/shared/pixmaps/old.png"), Qt::yellow);
    writePicture(path("/picture.with.odd.name"), Qt::cyan, {300, 200});

    EXPECT_EQ(colorOf(applicationIcon("org.editor.Editor")), QColor(Qt::blue));
    EXPECT_EQ(colorOf(applicationIcon("org.editor.Editor.png")), QColor(Qt::blue));
    EXPECT_EQ(colorOf(applicationIcon("inherited")), QColor(Qt::green));
    EXPECT_EQ(colorOf(applicationIcon("everywhere")), QColor(Qt::red));
    EXPECT_EQ(colorOf(applicationIcon("drawing")), QColor(255, 0, 255));
    EXPECT_EQ(colorOf(applicationIcon("old")), QColor(Qt::yellow));
    EXPECT_EQ(colorOf(applicationIcon("old.png")), QColor(Qt::yellow));
    EXPECT_EQ(colorOf(applicationIcon(path("/picture.with.odd.name"))), QColor(Qt::cyan));
    EXPECT_EQ(colorOf(applicationIcon(path("/shared/icons/hicolor/48/apps/drawing.svg"))),
              QColor(255, 0, 255));

    writePicture(path("/endless.png"), Qt::red, {4000, 10});
    ASSERT_EQ(mkfifo(path("/pipe.png").toUtf8().constData(), 0600), 0);
    for (const auto& icon :
         {QString(), QString("nowhere"), QString("broken"), QString("../hicolor/48/apps/x"),
          QString("."), path("/gone.png"), path("/endless.png"), path("/pipe.png"), path(""),
          path("/shared/icons/hicolor/48/apps/broken.png"), QString("/dev/zero")}) {
        EXPECT_TRUE(applicationIcon(icon).isNull()) << icon.toStdString();
    }
}

}  // namespace
}  // namespace tessellon
