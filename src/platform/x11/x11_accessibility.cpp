#include "platform/x11/x11_accessibility.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>
#include <utility>

namespace tessellon::x11 {
namespace {

Element elementOf(const ClientWindow& window) {
    return {ElementKind::window, window.id, window.generation};
}

Pid pidOfApplication(const Element& element) {
    return static_cast<Pid>(static_cast<std::uint32_t>(element.id));
}

/// The subroles that assistive technology knows for these kinds of windows.
std::string_view subroleOf(WindowKind kind) {
    switch (kind) {
        case WindowKind::standard:
            return "AXStandardWindow";
        case WindowKind::dialog:
            return "AXDialog";
        case WindowKind::floating:
            return "AXFloatingWindow";
        case WindowKind::passing:
        case WindowKind::splash:
        case WindowKind::dock:
        case WindowKind::desktop:
            break;
    }
    return "AXUnknown";
}

bool isMinimized(const ClientWindow& window) {
    // Some window managers call shaded windows hidden or iconic, too.
    return !window.shaded && (window.hiddenState || window.iconic);
}

}  // namespace

X11Accessibility::X11Accessibility(Connection& connection, WindowMirror& mirror,
                                   const RawInput& input)
    : connection_(connection),
      mirror_(mirror),
      input_(input),
      framesAtPress_(mirror, input),
      draggedFrame_(connection, mirror),
      writer_(connection, mirror, input) {
    buttonPressed_ =
        input_.buttonPressed().subscribe([this](std::uint32_t button) { onPressed(button); });
    // After everybody has heard of a release, so that whoever is about to write a frame holds the
    // window by then.
    idle_ = connection_.idle().subscribe([this] {
        if (!input_.isLeftButtonDown()) {
            endDrag();
        }
        writer_.flush();
        followWindowManager();
    });
}

void X11Accessibility::followWindowManager() {
    if (mirror_.windowManagerIsInDoubt()) {
        mirror_.refresh();
    }
    const auto current = mirror_.windowManagerRevision();
    if (std::exchange(toldWindowManager_, current) != current) {
        trustChanged_.emit();
    }
}

bool X11Accessibility::isTrusted() const {
    if (mirror_.isReading()) {
        look();
    } else {
        connection_.pull();
        mirror_.refresh();
    }
    return mirror_.windowManagerAlive() && !connection_.isLost();
}

std::optional<std::string> X11Accessibility::requestTrust() {
    if (isTrusted()) {
        return std::nullopt;
    }
    // There is nothing that could be asked or switched on.
    return "On this desktop all it takes is a window manager that follows EWMH, and none is "
           "running. Start one and come back here.";
}

void X11Accessibility::setMessagingTimeout(Seconds timeout) {
    writer_.setTimeout(timeout);
}

Element X11Accessibility::applicationElement(Pid pid) const {
    return {ElementKind::application, static_cast<std::uint32_t>(pid), 0};
}

void X11Accessibility::look() const {
    mirror_.look();
}

std::optional<Pid> X11Accessibility::pidOf(const Element& element) const {
    if (element.kind == ElementKind::application) {
        return pidOfApplication(element);
    }
    const auto* window = mirror_.find(static_cast<xcb_window_t>(element.id), element.generation);
    if (window == nullptr) {
        return std::nullopt;
    }
    return window->pid;
}

std::optional<Element> X11Accessibility::elementAtPosition(Point point) const {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
        return std::nullopt;
    }
    look();
    writer_.flush();
    // A quick hand is beside a small window before the window manager has moved it there.
    const ClientWindow* window = nullptr;
    if (pressed_ && input_.isLeftButtonDown()) {
        window = mirror_.find(static_cast<xcb_window_t>(pressed_->id), pressed_->generation);
    }
    if (window == nullptr) {
        window = windowAt(point);
    }
    if (window == nullptr || !window->managed) {
        return std::nullopt;
    }
    return elementOf(*window);
}

void X11Accessibility::onPressed(std::uint32_t button) {
    if (button != XCB_BUTTON_INDEX_1) {
        return;
    }
    pressed_.reset();
    mirror_.refresh();
    if (const auto& pointer = input_.pointerAtPress()) {
        const Point point{static_cast<double>(pointer->x), static_cast<double>(pointer->y)};
        if (const auto* window = clientAt(point, pointer->topLevel)) {
            pressed_ = elementOf(*window);
        }
    }
}

const ClientWindow* X11Accessibility::windowAt(Point point) const {
    const auto coordinate = [](double value) {
        return static_cast<std::int16_t>(std::clamp(std::floor(value), -32768.0, 32767.0));
    };
    // The server answers with the topmost child of the root that takes clicks there, so overlays
    // that let clicks through are passed over.
    connection_.countRoundTrip();
    const Reply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
        connection_.xcb(),
        xcb_translate_coordinates_unchecked(connection_.xcb(), connection_.root(),
                                            connection_.root(), coordinate(point.x),
                                            coordinate(point.y)),
        nullptr));
    return reply ? clientAt(point, reply->child) : nullptr;
}

/// The client at a point that has this child of the root topmost there.
const ClientWindow* X11Accessibility::clientAt(Point point, xcb_window_t topLevel) const {
    const auto* window = mirror_.findByTopLevel(topLevel);
    if (window == nullptr && topLevel != XCB_WINDOW_NONE && isInvisible(topLevel)) {
        // KWin puts such a window over everything while it drags, and it drags from the press on
        // when the command key is down.
        const auto& stacking = mirror_.stacking();
        const auto below = std::find_if(stacking.begin(), stacking.end(), [&](const auto* each) {
            return each->viewable && each->visibleFrame().contains(point);
        });
        window = below != stacking.end() ? *below : nullptr;
    }
    return window;
}

bool X11Accessibility::isInvisible(xcb_window_t window) const {
    connection_.countRoundTrip();
    const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection_.xcb(), xcb_get_window_attributes_unchecked(connection_.xcb(), window),
        nullptr));
    return reply && reply->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
}

std::optional<AttributeValue> X11Accessibility::read(const Element& element,
                                                     Attribute attribute) const {
    look();
    if (element.kind == ElementKind::application) {
        return readApplication(pidOfApplication(element), attribute);
    }
    if (attribute == Attribute::position || attribute == Attribute::size) {
        // Only a read of a frame waits for what was written, so that writes to several windows
        // travel together.
        writer_.flush();
    }
    const auto* window = mirror_.find(static_cast<xcb_window_t>(element.id), element.generation);
    if (window == nullptr) {
        return std::nullopt;
    }
    if (attribute == Attribute::size) {
        if (const auto size = draggedSizes_.outstanding(element)) {
            return *size;
        }
    }
    if (attribute == Attribute::position && input_.isLeftButtonDown() &&
        !writer_.isUnanswered(window->id)) {
        return draggedFrame_.origin(window->id);
    }
    return readWindow(*window, attribute);
}

std::optional<AttributeValue> X11Accessibility::readApplication(Pid pid,
                                                                Attribute attribute) const {
    if (attribute == Attribute::windows) {
        std::vector<Element> windows;
        for (const auto* window : mirror_.stacking()) {
            if (window->pid == pid && mirror_.isOnCurrentDesktop(*window)) {
                windows.push_back(elementOf(*window));
            }
        }
        return windows;
    }
    if (attribute == Attribute::focusedWindow) {
        const auto* active = mirror_.activeWindow();
        if (active != nullptr && active->pid == pid) {
            return elementOf(*active);
        }
        for (const auto* window : mirror_.stacking()) {
            if (window->pid == pid && mirror_.isOnCurrentDesktop(*window) &&
                !isMinimized(*window)) {
                return elementOf(*window);
            }
        }
    }
    return std::nullopt;
}

std::optional<AttributeValue> X11Accessibility::readWindow(const ClientWindow& window,
                                                           Attribute attribute) const {
    switch (attribute) {
        case Attribute::position:
            if (writer_.isUnanswered(window.id)) {
                return std::nullopt;
            }
            return window.visibleFrame().origin();
        case Attribute::size:
            if (writer_.isUnanswered(window.id)) {
                return std::nullopt;
            }
            return window.visibleFrame().size();
        case Attribute::title:
            return window.title;
        case Attribute::role:
            if (!window.managed) {
                return std::nullopt;
            }
            return std::string("AXWindow");
        case Attribute::subrole:
            return std::string(subroleOf(window.kind));
        case Attribute::fullScreen:
            return window.fullScreen;
        case Attribute::minimized:
            return isMinimized(window);
        case Attribute::maximized:
            return window.maximizedVert || window.maximizedHorz;
        case Attribute::parent:
            return applicationElement(window.pid);
        case Attribute::focusedWindow:
        case Attribute::windows:
        case Attribute::window:
        case Attribute::enhancedUserInterface:
            break;
    }
    return std::nullopt;
}

bool X11Accessibility::write(const Element& element, Attribute attribute,
                             const AttributeValue& value) {
    const auto id = static_cast<xcb_window_t>(element.id);
    if (element.kind != ElementKind::window || mirror_.find(id, element.generation) == nullptr) {
        return false;
    }
    if (attribute == Attribute::position) {
        const auto* position = std::get_if<Point>(&value);
        if (position == nullptr || !std::isfinite(position->x) || !std::isfinite(position->y)) {
            return false;
        }
        draggedSizes_.forget(element);
        framesAtPress_.forget(id);
        writer_.requestPosition(id, *position);
        return true;
    }
    if (attribute == Attribute::size) {
        const auto* size = std::get_if<Size>(&value);
        if (size == nullptr || !std::isfinite(size->width) || !std::isfinite(size->height)) {
            return false;
        }
        draggedSizes_.forget(element);
        framesAtPress_.forget(id);
        writer_.requestSize(id, *size);
        return true;
    }
    return false;
}

void X11Accessibility::writeDraggedSize(const Element& window, Size size) {
    if (mirror_.find(static_cast<xcb_window_t>(window.id), window.generation) == nullptr ||
        !std::isfinite(size.width) || !std::isfinite(size.height)) {
        return;
    }
    // Where it is kept the user sees it at once; it is written again in the end all the same, since
    // the window manager may have had other ideas when it let the window go.
    if (mirror_.habits().keepsSizeWhileDragging) {
        write(window, Attribute::size, size);
    }
    draggedSizes_.remember(window, size);
}

Token X11Accessibility::holdDraggedSize(const Element& window) {
    return draggedSizes_.hold(window);
}

std::optional<Rect> X11Accessibility::frameAtPress(const Element& element) const {
    const auto* window = mirror_.find(static_cast<xcb_window_t>(element.id), element.generation);
    return window != nullptr && input_.isLeftButtonDown() ? framesAtPress_.of(*window)
                                                          : std::nullopt;
}

void X11Accessibility::endDrag() {
    draggedFrame_.forget();
    framesAtPress_.clear();
    for (const auto& [window, size] : draggedSizes_.takeDue()) {
        write(window, Attribute::size, size);
    }
}

Token X11Accessibility::beginReads() const {
    if (!mirror_.isReading()) {
        writer_.forgetUnanswered();
    }
    // What an operation wrote and did not read back is sent when it ends.
    return Token([this, reads = std::make_shared<Token>(mirror_.beginReads())] {
        writer_.flush();
        reads->reset();
    });
}

}  // namespace tessellon::x11
