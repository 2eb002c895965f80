#include "platform/qt/toolkit.h"

#include "base/log.h"

#include <QApplication>
#include <QByteArray>
#include <QString>
#include <string>
#include <utility>

namespace tessellon {
namespace {

// The toolkit takes a plain function, so what that needs has to be found from it.
std::function<void()>& onDisplayLost() {
    static std::function<void()> callback;
    return callback;
}

void handleMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    // The toolkit gives no other sign before it ends the process.
    if (message.startsWith(QLatin1String("The X11 connection broke"))) {
        if (const auto callback = std::exchange(onDisplayLost(), nullptr)) {
            callback();
        }
        return;
    }
    // A panel is taken for the active window while it has the keyboard. When the focus is with
    // another window of ours, the toolkit would give it to the panel, which must not have it.
    if (message.startsWith(QLatin1String("requestActivate() called for")) &&
        message.contains(QLatin1String("WindowDoesNotAcceptFocus"))) {
        return;
    }
    const std::string text = message.toStdString();
    switch (type) {
        case QtDebugMsg:
        case QtInfoMsg:
            logDebug(text);
            break;
        case QtWarningMsg:
            logWarning(text);
            break;
        case QtCriticalMsg:
        case QtFatalMsg:
            logError(text);
            break;
    }
}

}  // namespace

void prepareToolkit(std::function<void()> displayLost) {
    onDisplayLost() = std::move(displayLost);
    qInstallMessageHandler(handleMessage);
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication::setDesktopSettingsAware(false);
    QApplication::setQuitOnLastWindowClosed(false);
    // How window managers and panels find the desktop entry of a window.
    QApplication::setDesktopFileName(QStringLiteral("app.tessellon.Tessellon"));
}

}  // namespace tessellon
