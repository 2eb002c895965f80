#include "platform/qt/qt_own_application.h"

#include "platform/qt/panel_window.h"
#include "platform/qt/screen_coordinates.h"

#include <QApplication>
#include <QCoreApplication>
#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tessellon {
namespace {

// Events as the X protocol encodes them: what they have in common, and their places in one.
constexpr std::size_t typePlace = 0;
constexpr std::uint8_t typeMask = 0x7f;  // the upper bit says that a client has sent it

template <typename Number>
Number numberAt(const std::uint8_t* event, std::size_t place) {
    Number number{};
    std::memcpy(&number, event + place, sizeof number);
    return number;
}

/// FocusIn and FocusOut. A grab tells the window with the focus that it has lost it, and gets it
/// back, though the focus stays where it is; true moves of the focus during a grab have a mode of
/// their own.
bool comesFromGrab(const std::uint8_t* event) {
    constexpr std::size_t modePlace = 8;
    constexpr std::uint8_t focusIn = 9;
    constexpr std::uint8_t focusOut = 10;
    constexpr std::uint8_t notifyGrab = 1;
    constexpr std::uint8_t notifyUngrab = 2;
    const auto type = event[typePlace] & typeMask;
    const auto mode = event[modePlace];
    return (type == focusIn || type == focusOut) && (mode == notifyGrab || mode == notifyUngrab);
}

/// ButtonPress and MotionNotify of the core protocol or the X Input Extension: the window that is
/// told of them, or none for every other event.
std::uint32_t pressedOrMovedOver(const std::uint8_t* event) {
    constexpr std::uint8_t buttonPress = 4;  // these two are the same in both
    constexpr std::uint8_t motionNotify = 6;
    constexpr std::size_t windowPlace = 12;
    constexpr std::uint8_t genericEvent = 35;
    constexpr std::size_t genericTypePlace = 8;
    constexpr std::size_t genericWindowPlace = 24;
    const unsigned type = event[typePlace] & typeMask;
    const bool isGeneric = type == genericEvent;
    const auto kind = isGeneric ? numberAt<std::uint16_t>(event, genericTypePlace) : type;
    if (kind != buttonPress && kind != motionNotify) {
        return 0;
    }
    return numberAt<std::uint32_t>(event, isGeneric ? genericWindowPlace : windowPlace);
}

/// What was on its way when a window was hidden. The toolkit would take the window for the one that
/// is pressed, until after it is deleted, and look for it there whenever another one is hidden.
bool comesTooLate(const std::uint8_t* event) {
    const auto id = pressedOrMovedOver(event);
    const auto* const window = id != 0 ? QWidget::find(id) : nullptr;
    return window != nullptr && !window->isVisible();
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
    const auto* const event = static_cast<const std::uint8_t*>(message);
    return eventType == "xcb_generic_event_t" && (comesFromGrab(event) || comesTooLate(event));
}

}  // namespace tessellon
