// A desktop that exists only in memory: applications, windows with all their ways of misbehaving,
// screens and a pointer. Stands in for the real one in tests, and wherever there is no display.
#pragma once

#include "base/geometry.h"
#include "platform/accessibility.h"
#include "platform/applications.h"
#include "platform/displays.h"
#include "platform/types.h"
#include "platform/window_list.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessellon {

class MemoryAccessibility;
class MemoryEventMonitors;

struct MemoryApplication {
    RunningApplication info;
    std::optional<Element> focusedWindow;
    /// In its own order, which is that of opening.
    std::vector<Element> windows;
    bool enhancedUserInterface = false;
    /// False: every request to the application itself runs into the timeout.
    bool answers = true;
};

/// Frames are in the accessibility space.
struct MemoryWindow {
    Pid pid = 0;
    Rect frame{0, 0, 800, 600};
    /// Where the desktop keeps in mind what it was when the button went down.
    std::optional<Rect> frameAtPress;
    std::optional<std::string> title = "";
    std::optional<std::string> role = "AXWindow";
    std::optional<std::string> subrole = "AXStandardWindow";
    bool fullScreen = false;
    bool minimized = false;
    bool maximized = false;
    /// False while it is on a workspace that is not shown.
    bool onCurrentWorkspace = true;

    Size minimumSize{1, 1};
    /// The size is rounded down to multiples of this; 0 means any size.
    Size sizeIncrement{0, 0};
    bool refusesToMove = false;
    bool refusesToResize = false;

    /// How long the window takes to answer a read or to follow a write. Beyond the messaging
    /// timeout it counts as not answering.
    Seconds answerDelay{0};
    bool answers = true;
    /// What these attributes read as instead of the truth; nothing where they cannot be read.
    std::map<Attribute, std::optional<AttributeValue>> answersInstead;
    /// The window is gone after this many more reads.
    std::optional<int> readsBeforeItDies;

    /// What the window server's list says of it instead of the truth.
    std::optional<WindowListEntry> listedAs;
};

/// Something inside a window.
struct MemoryControl {
    /// The window or the control around it.
    Element parent;
    Rect frame;
    std::string role = "AXButton";
    /// Whether it can tell its window at once instead of only its parent.
    bool knowsItsWindow = false;
};

class MemoryDesktop {
  public:
    static constexpr Pid ownPid = 1;

    /// One screen of 1920 × 1080 with a bar of 25 points at its top, no applications, trusted.
    MemoryDesktop();
    ~MemoryDesktop();
    MemoryDesktop(const MemoryDesktop&) = delete;
    MemoryDesktop& operator=(const MemoryDesktop&) = delete;

    // The ports.
    MemoryAccessibility& accessibility() { return *accessibility_; }
    Applications& applications();
    Displays& displays();
    WindowList& windowList();
    MemoryEventMonitors& eventMonitors() { return *eventMonitors_; }

    // Applications, in the order they were launched.
    void launch(RunningApplication info);
    void quit(Pid pid);
    /// Null when there is none with this process id.
    MemoryApplication* application(Pid pid);
    void setFrontmost(std::optional<Pid> pid) { frontmost_ = pid; }
    std::optional<Pid> frontmost() const { return frontmost_; }

    // Windows. A new one is in front of all others but does not get the keyboard.
    Element open(MemoryWindow window);
    /// Opens a window under the identifier of one that is closed; the elements differ all the same.
    Element openReusing(const Element& closed, MemoryWindow window);
    void close(const Element& element);
    /// Null when there is no such window any more.
    MemoryWindow* window(const Element& element);
    void raise(const Element& element);
    /// Raises the window and gives it and its application the keyboard.
    void focus(const Element& element);
    /// The windows from front to back, also those that are not on screen.
    const std::vector<Element>& stacking() const { return stacking_; }
    /// Whether the user sees the window, other windows before it aside.
    bool isOnScreen(const Element& element) const;

    Element addControl(MemoryControl control);
    const MemoryControl* control(const Element& element) const;
    /// The window that a control is in; nothing when that is closed.
    std::optional<Element> windowAround(const Element& element) const;
    /// The innermost thing at a point.
    std::optional<Element> elementAt(Point point) const;

    // Screens and pointer, in screen coordinates: origin at the bottom left, y up.
    void setScreens(std::vector<Screen> screens);
    /// A dock takes another share of a screen, of which nobody is told.
    void setVisibleFrame(std::uint64_t screen, const Rect& visibleFrame);
    const std::vector<Screen>& screens() const { return screens_; }
    /// The screen with the keyboard; the first one while none is set.
    void setMainScreen(std::optional<std::uint64_t> id) { mainScreen_ = id; }
    std::optional<std::uint64_t> mainScreen() const { return mainScreen_; }
    void setPointer(std::optional<Point> location) { pointer_ = location; }
    std::optional<Point> pointer() const { return pointer_; }
    /// The applications that were asked to the front, in order.
    const std::vector<Pid>& activations() const { return activations_; }

    /// Windows can be moved, or not, from now on; tells who listens, also when nothing has changed,
    /// as when one window manager replaces another.
    void setTrusted(bool trusted);
    bool isTrusted() const { return trusted_; }
    void countTrustRequest() { ++trustRequests_; }
    int trustRequests() const { return trustRequests_; }
    void setWindowListAvailable(bool available) { windowListAvailable_ = available; }

  private:
    class ApplicationsPort;
    class DisplaysPort;
    class WindowListPort;

    const MemoryWindow* findWindow(const Element& element) const;
    Element place(const Element& element, MemoryWindow window);

    std::vector<MemoryApplication> running_;
    std::optional<Pid> frontmost_;
    std::map<std::uint64_t, std::pair<Element, MemoryWindow>> windows_;
    std::vector<Element> stacking_;
    std::vector<std::pair<Element, MemoryControl>> controls_;
    std::vector<Screen> screens_;
    std::optional<std::uint64_t> mainScreen_;
    std::optional<Point> pointer_;
    std::vector<Pid> activations_;
    bool trusted_ = true;
    int trustRequests_ = 0;
    bool windowListAvailable_ = true;
    std::uint64_t nextId_ = 1;
    std::uint64_t nextGeneration_ = 1;

    std::unique_ptr<MemoryAccessibility> accessibility_;
    std::unique_ptr<ApplicationsPort> applications_;
    std::unique_ptr<DisplaysPort> displays_;
    std::unique_ptr<WindowListPort> windowList_;
    std::unique_ptr<MemoryEventMonitors> eventMonitors_;
};

}  // namespace tessellon
