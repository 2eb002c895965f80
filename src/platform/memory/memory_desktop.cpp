#include "platform/memory/memory_desktop.h"

#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_event_monitors.h"

#include <algorithm>
#include <utility>

namespace tessellon {

class MemoryDesktop::ApplicationsPort final : public Applications {
  public:
    explicit ApplicationsPort(MemoryDesktop& desktop) : desktop_(desktop) {}

    std::vector<RunningApplication> running() const override {
        std::vector<RunningApplication> all;
        for (const auto& application : desktop_.running_) {
            all.push_back(application.info);
        }
        return all;
    }

    std::optional<RunningApplication> withPid(Pid pid) const override {
        const auto* found = desktop_.application(pid);
        return found != nullptr ? std::optional(found->info) : std::nullopt;
    }

    std::optional<RunningApplication> frontmost() const override {
        return desktop_.frontmost_ ? withPid(*desktop_.frontmost_) : std::nullopt;
    }

    void activate(Pid pid) override {
        desktop_.activations_.push_back(pid);
        if (desktop_.application(pid) != nullptr) {
            desktop_.frontmost_ = pid;
        }
    }

    Pid ownPid() const override { return MemoryDesktop::ownPid; }

  private:
    MemoryDesktop& desktop_;
};

class MemoryDesktop::DisplaysPort final : public Displays {
  public:
    explicit DisplaysPort(MemoryDesktop& desktop) : desktop_(desktop) {}

    std::vector<Screen> screens() const override { return desktop_.screens_; }

    std::optional<Screen> mainScreen() const override {
        for (const auto& screen : desktop_.screens_) {
            if (!desktop_.mainScreen_ || screen.id == *desktop_.mainScreen_) {
                return screen;
            }
        }
        return std::nullopt;
    }

    void announce() const { changed_.emit(); }

  private:
    MemoryDesktop& desktop_;
};

class MemoryDesktop::WindowListPort final : public WindowList {
  public:
    explicit WindowListPort(MemoryDesktop& desktop) : desktop_(desktop) {}

    std::optional<std::vector<WindowListEntry>> onScreenWindows() const override {
        if (!desktop_.windowListAvailable_) {
            return std::nullopt;
        }
        std::vector<WindowListEntry> entries;
        for (const auto& element : desktop_.stacking_) {
            if (desktop_.isOnScreen(element)) {
                const auto& window = *desktop_.findWindow(element);
                entries.push_back(
                    window.listedAs.value_or(WindowListEntry{0, window.pid, window.frame}));
            }
        }
        return entries;
    }

  private:
    MemoryDesktop& desktop_;
};

MemoryDesktop::MemoryDesktop()
    : screens_{{1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}, std::nullopt, "Screen"}},
      accessibility_(std::make_unique<MemoryAccessibility>(*this)),
      applications_(std::make_unique<ApplicationsPort>(*this)),
      displays_(std::make_unique<DisplaysPort>(*this)),
      windowList_(std::make_unique<WindowListPort>(*this)),
      eventMonitors_(std::make_unique<MemoryEventMonitors>(*this)) {}

MemoryDesktop::~MemoryDesktop() = default;

Applications& MemoryDesktop::applications() {
    return *applications_;
}
Displays& MemoryDesktop::displays() {
    return *displays_;
}
WindowList& MemoryDesktop::windowList() {
    return *windowList_;
}

void MemoryDesktop::launch(RunningApplication info) {
    MemoryApplication application;
    application.info = std::move(info);
    running_.push_back(std::move(application));
}

void MemoryDesktop::quit(Pid pid) {
    if (auto* leaving = application(pid)) {
        for (const auto& element : std::vector<Element>(leaving->windows)) {
            close(element);
        }
        std::erase_if(running_, [pid](const auto& other) { return other.info.pid == pid; });
        if (frontmost_ == pid) {
            frontmost_.reset();
        }
    }
}

MemoryApplication* MemoryDesktop::application(Pid pid) {
    const auto found = std::find_if(running_.begin(), running_.end(),
                                    [pid](const auto& other) { return other.info.pid == pid; });
    return found != running_.end() ? &*found : nullptr;
}

Element MemoryDesktop::open(MemoryWindow window) {
    return place({ElementKind::window, nextId_++, nextGeneration_++}, std::move(window));
}

Element MemoryDesktop::openReusing(const Element& closed, MemoryWindow window) {
    return place({ElementKind::window, closed.id, nextGeneration_++}, std::move(window));
}

Element MemoryDesktop::place(const Element& element, MemoryWindow window) {
    if (auto* owner = application(window.pid)) {
        owner->windows.push_back(element);
    }
    stacking_.insert(stacking_.begin(), element);
    windows_.insert_or_assign(element.id, std::pair(element, std::move(window)));
    return element;
}

void MemoryDesktop::close(const Element& element) {
    const auto* closing = findWindow(element);
    if (closing == nullptr) {
        return;
    }
    if (auto* owner = application(closing->pid)) {
        std::erase(owner->windows, element);
        if (owner->focusedWindow == element) {
            owner->focusedWindow.reset();
        }
    }
    std::erase(stacking_, element);
    windows_.erase(element.id);
}

const MemoryWindow* MemoryDesktop::findWindow(const Element& element) const {
    const auto found = windows_.find(element.id);
    return found != windows_.end() && found->second.first == element ? &found->second.second
                                                                     : nullptr;
}

MemoryWindow* MemoryDesktop::window(const Element& element) {
    return const_cast<MemoryWindow*>(findWindow(element));
}

void MemoryDesktop::raise(const Element& element) {
    if (findWindow(element) != nullptr) {
        std::erase(stacking_, element);
        stacking_.insert(stacking_.begin(), element);
    }
}

void MemoryDesktop::focus(const Element& element) {
    raise(element);
    if (const auto* focused = findWindow(element)) {
        frontmost_ = focused->pid;
        if (auto* owner = application(focused->pid)) {
            owner->focusedWindow = element;
        }
    }
}

bool MemoryDesktop::isOnScreen(const Element& element) const {
    const auto* shown = findWindow(element);
    if (shown == nullptr || shown->minimized || !shown->onCurrentWorkspace) {
        return false;
    }
    return std::none_of(running_.begin(), running_.end(), [&](const auto& application) {
        return application.info.pid == shown->pid && application.info.hidden;
    });
}

Element MemoryDesktop::addControl(MemoryControl control) {
    const Element element{ElementKind::control, nextId_++, nextGeneration_++};
    controls_.emplace_back(element, std::move(control));
    return element;
}

const MemoryControl* MemoryDesktop::control(const Element& element) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const auto& other) { return other.first == element; });
    return found != controls_.end() ? &found->second : nullptr;
}

std::optional<Element> MemoryDesktop::windowAround(const Element& element) const {
    Element around = element;
    while (const auto* inner = control(around)) {
        around = inner->parent;
    }
    return findWindow(around) != nullptr ? std::optional(around) : std::nullopt;
}

std::optional<Element> MemoryDesktop::elementAt(Point point) const {
    for (const auto& element : stacking_) {
        if (!isOnScreen(element) || !findWindow(element)->frame.contains(point)) {
            continue;
        }
        // A control is added after the one around it.
        for (auto inner = controls_.rbegin(); inner != controls_.rend(); ++inner) {
            if (inner->second.frame.contains(point) && windowAround(inner->first) == element) {
                return inner->first;
            }
        }
        return element;
    }
    return std::nullopt;
}

void MemoryDesktop::setScreens(std::vector<Screen> screens) {
    screens_ = std::move(screens);
    displays_->announce();
}

void MemoryDesktop::setTrusted(bool trusted) {
    trusted_ = trusted;
    accessibility_->announceTrust();
}

void MemoryDesktop::setVisibleFrame(std::uint64_t screen, const Rect& visibleFrame) {
    for (auto& candidate : screens_) {
        if (candidate.id == screen) {
            candidate.visibleFrame = visibleFrame;
        }
    }
}

}  // namespace tessellon
