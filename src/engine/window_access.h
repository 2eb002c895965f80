// Other programs' windows as the engine uses them: typed reads, the frame, which windows may be
// moved at all, and how to find them. Nothing is kept between calls.
//
// Rectangles and points are in the accessibility space. Whatever cannot be read is nothing;
// whatever cannot be written is dropped, and the caller reads back what became of it.
#pragma once

#include "base/geometry.h"
#include "engine/engine_services.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

inline constexpr std::string_view windowRole = "AXWindow";
inline constexpr std::string_view standardWindowSubrole = "AXStandardWindow";

/// How far two frames of one window may differ in each number and still count as the same: strictly
/// less than this, in points. Programs and the window server round differently.
inline constexpr double frameTolerance = 3;

/// A window and the frame it had when it was listed.
struct VisibleWindow {
    Element window;
    Rect frame;
    bool operator==(const VisibleWindow&) const = default;
};

/// A window and the frame it is to take.
struct WindowPlacement {
    Element window;
    Rect target;
    bool operator==(const WindowPlacement&) const = default;
};

class WindowAccess {
  public:
    explicit WindowAccess(const EngineServices& services);

    /// The attribute when it reads as this type, else nothing.
    std::optional<Point> readPoint(const Element& element, Attribute attribute) const;
    std::optional<Size> readSize(const Element& element, Attribute attribute) const;
    std::optional<std::string> readString(const Element& element, Attribute attribute) const;
    std::optional<Element> readElement(const Element& element, Attribute attribute) const;

    /// Three-valued: nothing means unknown. Numbers are true when not 0.
    std::optional<bool> readBool(const Element& element, Attribute attribute) const;

    /// Nothing unless position and size both read, as finite numbers.
    std::optional<Rect> readFrame(const Element& window) const;

    /// Asks a window to take a frame: size, position, size again, since some windows limit the size
    /// by the place they are at and some the place by their size. An application's enhanced user
    /// interface is switched off meanwhile; it would animate the changes.
    void setFrame(const Rect& rect, const Element& window);

    /// The same for several windows, in order; nothing is read between the writes, so that their
    /// programs work at the same time.
    void setFrames(std::span<const WindowPlacement> placements);

    /// Always valid UTF-8; "" when there is none or it cannot be read.
    std::string title(const Element& window) const;

    /// The running application that a window belongs to.
    std::optional<RunningApplication> owner(const Element& window) const;
    std::optional<std::string> bundleIdentifier(const Element& window) const;

    /// An ordinary window that is not full screen: no dialog, panel or menu.
    bool isStandardWindow(const Element& window) const;

    /// Whether a window may be moved: an ordinary one, not our own, of no ignored application, not
    /// small while small windows are ignored.
    bool canSnap(const Element& window) const;

    /// The window with the keyboard, if it may be moved.
    std::optional<Element> focusedWindow() const;

    /// The windows of an application that may be moved and are not minimized, in its order.
    std::vector<Element> windowsOfApp(Pid pid) const;

    /// The window at a point, if it may be moved.
    std::optional<Element> windowUnderPointer(Point point) const;

    /// The windows that may be moved and that the user sees, front-most first; in the order of the
    /// applications when the window server cannot tell which are on screen.
    std::vector<VisibleWindow> orderedVisibleWindows() const;

  private:
    class SnapRule;

    std::vector<Element> windowsOfApp(Pid pid, SnapRule& rule) const;

    EngineServices services_;
};

}  // namespace tessellon
