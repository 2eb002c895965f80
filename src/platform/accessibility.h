// The port through which other programs' windows are found, read and changed.
//
// Coordinates are those of the accessibility space: origin at the top left of the desktop, y down,
// in points (device pixels on X11). A frame is what the user sees of a window: title bar and
// borders included, invisible shadows and resize margins left out.
#pragma once

#include "base/geometry.h"
#include "base/signal.h"
#include "base/token.h"
#include "platform/types.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tessellon {

enum class ElementKind : std::uint8_t { application, window, control };

/// Names an application, a window or something inside a window. A plain value: two elements are the
/// same thing exactly when they compare equal, also when the desktop has reused an identifier in
/// between (the generation differs then).
struct Element {
    ElementKind kind = ElementKind::window;
    std::uint64_t id = 0;
    std::uint64_t generation = 0;
    bool operator==(const Element&) const = default;
};

/// What can be asked of an element, with the name that assistive technology knows it by and the
/// type of the value.
enum class Attribute : std::uint8_t {
    focusedWindow,  // AXFocusedWindow, of an application: Element
    windows,        // AXWindows, of an application, on the workspaces shown: list of Element
    position,       // AXPosition: Point
    size,           // AXSize: Size
    title,          // AXTitle: string
    role,           // AXRole: string
    subrole,        // AXSubrole: string
    fullScreen,     // AXFullScreen: bool
    minimized,      // AXMinimized: bool
    maximized,      // no name of its own: bool, also when in one direction only
    window,         // AXWindow, of something inside a window: the Element of the window
    parent,         // AXParent: Element
    enhancedUserInterface,  // AXEnhancedUserInterface, of an application: bool
};

using AttributeValue =
    std::variant<Point, Size, std::string, bool, double, Element, std::vector<Element>>;

class Accessibility {
  public:
    virtual ~Accessibility() = default;

    /// True while foreign windows can be moved at all: on X11, while a window manager that speaks
    /// EWMH is alive.
    virtual bool isTrusted() const = 0;

    /// Has the desktop help the user to what isTrusted asks for. Nothing for the user on success,
    /// else what they can do themselves, in a sentence.
    virtual std::optional<std::string> requestTrust() = 0;

    /// Emitted after isTrusted has changed, and after another window manager has taken over: what
    /// was under way with the former one will not come to its end.
    const Signal<>& trustChanged() const { return trustChanged_; }

    /// How long one request may wait for an answer before it counts as failed.
    virtual void setMessagingTimeout(Seconds timeout) = 0;

    /// The element of a running application. Never fails by itself; reads from it do when there is
    /// no such application.
    virtual Element applicationElement(Pid pid) const = 0;

    /// The process that owns an element; nothing when the element is gone.
    virtual std::optional<Pid> pidOf(const Element& element) const = 0;

    /// The innermost element at a point of the accessibility space, or nothing. While the left
    /// button is down the pointer has the window with it that was pressed, also where that window
    /// comes late.
    virtual std::optional<Element> elementAtPosition(Point point) const = 0;

    /// The value of an attribute as it is now. Nothing when the element is gone, has no such
    /// attribute or does not answer in time. A read after a write to the same window sees what the
    /// window made of it.
    virtual std::optional<AttributeValue> read(const Element& element,
                                               Attribute attribute) const = 0;

    /// Asks for a new value. False when that is known to have failed; true promises nothing, since
    /// a window may refuse or adjust: read it back. Writes to several windows before the first read
    /// overlap in time. Written are position, size and enhancedUserInterface.
    virtual bool write(const Element& element, Attribute attribute,
                       const AttributeValue& value) = 0;

    /// Asks for a new size of a window that the user is dragging right now. Some desktops cannot
    /// change a window before it is let go; there the size comes about when the button goes up,
    /// unless a new frame was written by then. Reads of the size give the new one from now on.
    virtual void writeDraggedSize(const Element& window, Size size) = 0;

    /// While the token lives, a size from writeDraggedSize that is still outstanding is left so,
    /// because a new frame is about to be written. If none was when it is dropped, the size comes
    /// about then.
    virtual Token holdDraggedSize(const Element& window) = 0;

    /// The frame that a window had when the left button went down, as far as it is known while the
    /// button is down. Who hears of the drag may find that the window has followed it already.
    virtual std::optional<Rect> frameAtPress(const Element& window) const = 0;

    /// While the token lives, reads may be answered from one look at the desktop, taken at the
    /// first of them, instead of a look each; what is written meanwhile is read afresh. One token
    /// covers one operation of the engine. Tokens may nest; the outermost counts.
    virtual Token beginReads() const = 0;

  protected:
    Accessibility() = default;
    Signal<> trustChanged_;
};

}  // namespace tessellon
