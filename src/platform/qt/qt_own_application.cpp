#include "platform/qt/qt_own_application.h"

#include "platform/qt/panel_window.h"
#include "platform/qt/screen_coordinates.h"

#include <QApplication>
#include <QCoreApplication>
#include <QWidget>
#include <cstdint>
#include <cstdlib>

namespace tessellon {
namespace {

// The events FocusIn and FocusOut as the X protocol encodes them. A grab tells the window with the
// focus that it has lost it, and gets it back, though the focus stays where it is; true moves of
// the focus during a grab have a mode of their own.
constexpr std::size_t typePlace = 0;
constexpr std::size_t modePlace = 8;
constexpr std::uint8_t typeMask = 0x7f;
constexpr std::uint8_t focusIn = 9;
constexpr std::uint8_t focusOut = 10;
constexpr std::uint8_t notifyGrab = 1;
constexpr std::uint8_t notifyUngrab = 2;

bool comesFromGrab(const std::uint8_t* event) {
    const auto type = event[typePlace] & typeMask;
    const auto mode = event[modePlace];
    return (type == focusIn || type == focusOut) && (mode == notifyGrab || mode == notifyUngrab);
}

}  // namespace

QtOwnApplication::QtOwnApplication(QtRunLoop& loop) : loop_(loop) {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

QtOwnApplication::~QtOwnApplication() {
    if (auto* const application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

std::optional<Rect> QtOwnApplication::keyWindowFrame() const {
    const auto* const window = QApplication::activeWindow();
    if (window == nullptr || dynamic_cast<const PanelWindow*>(window) != nullptr) {
        return std::nullopt;
    }
    return fromQtGeometry(window->frameGeometry(), qtScreens());
}

void QtOwnApplication::terminate() {
    // Not at once: a loop that has not begun to run yet would not heed it.
    termination_ = loop_.after(Seconds{0}, [this] { loop_.quit(EXIT_SUCCESS); });
}

bool QtOwnApplication::nativeEventFilter(const QByteArray& eventType, void* message,
                                         qintptr* /*result*/) {
    return eventType == "xcb_generic_event_t" &&
           comesFromGrab(static_cast<const std::uint8_t*>(message));
}

}  // namespace tessellon
