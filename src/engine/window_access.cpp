#include "engine/window_access.h"

#include "app/preferences.h"
#include "base/text.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <variant>

namespace tessellon {
namespace {

constexpr double smallestWidth = 400;
constexpr double smallestHeight = 300;

// How far the way from something inside a window up to the window may be; a program that makes its
// elements each other's parents must not keep us forever.
constexpr int longestClimb = 32;

template <typename T>
std::optional<T> readAs(const Accessibility& accessibility, const Element& element,
                        Attribute attribute) {
    auto value = accessibility.read(element, attribute);
    if (!value || !std::holds_alternative<T>(*value)) {
        return std::nullopt;
    }
    return std::get<T>(std::move(*value));
}

struct WindowServerEntry {
    Pid pid;
    Rect bounds;
};

std::vector<WindowServerEntry> usableEntries(const WindowList& list) {
    std::vector<WindowServerEntry> usable;
    if (const auto all = list.onScreenWindows()) {
        usable.reserve(all->size());
        for (const auto& entry : *all) {
            if (entry.layer == 0 && entry.ownerPid && entry.bounds) {
                usable.push_back({*entry.ownerPid, *entry.bounds});
            }
        }
    }
    return usable;
}

struct Candidate {
    VisibleWindow window;
    Pid pid;
    std::size_t rank;
};

constexpr std::size_t unmatched = std::numeric_limits<std::size_t>::max();

std::size_t rankOf(const Candidate& candidate, const std::vector<WindowServerEntry>& entries) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].pid == candidate.pid &&
            nearlyEqual(entries[i].bounds, candidate.window.frame, frameTolerance)) {
            return i;
        }
    }
    return unmatched;
}

}  // namespace

/// The settings that decide which windows may be moved, looked up once for one operation.
class WindowAccess::SnapRule {
  public:
    explicit SnapRule(const WindowAccess& windows)
        : windows_(windows),
          ownPid_(windows.services_.applications.ownPid()),
          ignored_(ignoredApplications(windows.services_.defaults)),
          ignoreSmall_(windows.services_.defaults.boolForKey(preference::ignoreSmall)) {}

    bool admits(const RunningApplication& application) const {
        return application.pid != ownPid_ &&
               !(application.bundleIdentifier &&
                 std::find(ignored_.begin(), ignored_.end(), *application.bundleIdentifier) !=
                     ignored_.end());
    }

    bool admits(const Element& window) {
        const auto pid = windows_.services_.accessibility.pidOf(window);
        if (!pid || !admitsOwner(*pid) || !windows_.isStandardWindow(window)) {
            return false;
        }
        if (!ignoreSmall_) {
            return true;
        }
        const auto size = windows_.readSize(window, Attribute::size);
        return !size || (size->width >= smallestWidth && size->height >= smallestHeight);
    }

  private:
    bool admitsOwner(Pid pid) {
        if (!owner_ || owner_->first != pid) {
            const auto application = windows_.services_.applications.withPid(pid);
            owner_.emplace(pid, pid != ownPid_ && (!application || admits(*application)));
        }
        return owner_->second;
    }

    const WindowAccess& windows_;
    Pid ownPid_;
    std::vector<std::string> ignored_;
    bool ignoreSmall_;
    // The windows of one application are asked about in a row.
    std::optional<std::pair<Pid, bool>> owner_;
};

WindowAccess::WindowAccess(const EngineServices& services) : services_(services) {}

std::optional<Point> WindowAccess::readPoint(const Element& element, Attribute attribute) const {
    return readAs<Point>(services_.accessibility, element, attribute);
}

std::optional<Size> WindowAccess::readSize(const Element& element, Attribute attribute) const {
    return readAs<Size>(services_.accessibility, element, attribute);
}

std::optional<std::string> WindowAccess::readString(const Element& element,
                                                    Attribute attribute) const {
    return readAs<std::string>(services_.accessibility, element, attribute);
}

std::optional<Element> WindowAccess::readElement(const Element& element,
                                                 Attribute attribute) const {
    return readAs<Element>(services_.accessibility, element, attribute);
}

std::optional<bool> WindowAccess::readBool(const Element& element, Attribute attribute) const {
    const auto value = services_.accessibility.read(element, attribute);
    if (!value) {
        return std::nullopt;
    }
    if (const auto* flag = std::get_if<bool>(&*value)) {
        return *flag;
    }
    if (const auto* number = std::get_if<double>(&*value)) {
        return *number != 0;
    }
    return std::nullopt;
}

std::optional<Rect> WindowAccess::readFrame(const Element& window) const {
    const auto position = readPoint(window, Attribute::position);
    if (!position) {
        return std::nullopt;
    }
    const auto size = readSize(window, Attribute::size);
    if (!size) {
        return std::nullopt;
    }
    const Rect frame{position->x, position->y, size->width, size->height};
    return isFinite(frame) ? std::optional(frame) : std::nullopt;
}

void WindowAccess::setFrame(const Rect& rect, const Element& window) {
    const WindowPlacement placement{window, rect};
    setFrames(std::span(&placement, 1));
}

void WindowAccess::setFrames(std::span<const WindowPlacement> placements) {
    auto& accessibility = services_.accessibility;
    std::vector<std::optional<Element>> enhanced(placements.size());
    for (std::size_t i = 0; i < placements.size(); ++i) {
        if (const auto pid = accessibility.pidOf(placements[i].window)) {
            const auto application = accessibility.applicationElement(*pid);
            if (readBool(application, Attribute::enhancedUserInterface) == true) {
                enhanced[i] = application;
            }
        }
    }
    for (std::size_t i = 0; i < placements.size(); ++i) {
        const auto& [window, target] = placements[i];
        if (enhanced[i]) {
            accessibility.write(*enhanced[i], Attribute::enhancedUserInterface, false);
        }
        accessibility.write(window, Attribute::size, target.size());
        accessibility.write(window, Attribute::position, target.origin());
        accessibility.write(window, Attribute::size, target.size());
        if (enhanced[i]) {
            accessibility.write(*enhanced[i], Attribute::enhancedUserInterface, true);
        }
    }
}

std::string WindowAccess::title(const Element& window) const {
    auto title = readString(window, Attribute::title);
    if (!title) {
        return {};
    }
    return isValidUtf8(*title) ? std::move(*title) : sanitizedUtf8(*title);
}

std::optional<RunningApplication> WindowAccess::owner(const Element& window) const {
    const auto pid = services_.accessibility.pidOf(window);
    if (!pid) {
        return std::nullopt;
    }
    return services_.applications.withPid(*pid);
}

std::optional<std::string> WindowAccess::bundleIdentifier(const Element& window) const {
    auto application = owner(window);
    if (!application) {
        return std::nullopt;
    }
    return std::move(application->bundleIdentifier);
}

bool WindowAccess::isStandardWindow(const Element& window) const {
    if (readString(window, Attribute::role) != windowRole) {
        return false;
    }
    const auto subrole = readString(window, Attribute::subrole);
    if (subrole && *subrole != standardWindowSubrole) {
        return false;
    }
    return readBool(window, Attribute::fullScreen) != true;
}

bool WindowAccess::canSnap(const Element& window) const {
    return SnapRule(*this).admits(window);
}

std::optional<Element> WindowAccess::focusedWindow() const {
    if (!services_.accessibility.isTrusted()) {
        return std::nullopt;
    }
    const auto reads = services_.accessibility.beginReads();
    const auto application = services_.applications.frontmost();
    if (!application) {
        return std::nullopt;
    }
    SnapRule rule(*this);
    if (!rule.admits(*application)) {
        return std::nullopt;
    }
    const auto window = readElement(services_.accessibility.applicationElement(application->pid),
                                    Attribute::focusedWindow);
    return window && rule.admits(*window) ? window : std::nullopt;
}

std::vector<Element> WindowAccess::windowsOfApp(Pid pid) const {
    const auto reads = services_.accessibility.beginReads();
    SnapRule rule(*this);
    return windowsOfApp(pid, rule);
}

std::vector<Element> WindowAccess::windowsOfApp(Pid pid, SnapRule& rule) const {
    const auto& accessibility = services_.accessibility;
    if (!accessibility.isTrusted()) {
        return {};
    }
    auto windows = readAs<std::vector<Element>>(
        accessibility, accessibility.applicationElement(pid), Attribute::windows);
    if (!windows) {
        return {};
    }
    std::erase_if(*windows, [&](const Element& window) {
        return !rule.admits(window) || readBool(window, Attribute::minimized) == true;
    });
    return std::move(*windows);
}

std::optional<Element> WindowAccess::windowUnderPointer(Point point) const {
    if (!services_.accessibility.isTrusted()) {
        return std::nullopt;
    }
    const auto reads = services_.accessibility.beginReads();
    const auto ifAdmitted = [this](const Element& window) {
        return canSnap(window) ? std::optional(window) : std::nullopt;
    };
    auto element = services_.accessibility.elementAtPosition(point);
    for (int step = 0; element && step < longestClimb; ++step) {
        if (readString(*element, Attribute::role) == windowRole) {
            return ifAdmitted(*element);
        }
        if (const auto window = readElement(*element, Attribute::window)) {
            return ifAdmitted(*window);
        }
        element = readElement(*element, Attribute::parent);
    }
    return std::nullopt;
}

std::vector<VisibleWindow> WindowAccess::orderedVisibleWindows() const {
    const auto reads = services_.accessibility.beginReads();
    const Pid ownPid = services_.applications.ownPid();
    SnapRule rule(*this);
    std::vector<Candidate> candidates;
    for (const auto& application : services_.applications.running()) {
        if (application.policy != ActivationPolicy::regular || application.hidden ||
            application.pid == ownPid) {
            continue;
        }
        for (const auto& window : windowsOfApp(application.pid, rule)) {
            if (const auto frame = readFrame(window)) {
                candidates.push_back({{window, *frame}, application.pid, unmatched});
            }
        }
    }

    const auto entries = usableEntries(services_.windowList);
    bool anyMatched = false;
    for (auto& candidate : candidates) {
        candidate.rank = rankOf(candidate, entries);
        anyMatched = anyMatched || candidate.rank != unmatched;
    }
    if (anyMatched) {
        std::erase_if(candidates,
                      [](const Candidate& candidate) { return candidate.rank == unmatched; });
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });

    std::vector<VisibleWindow> visible;
    visible.reserve(candidates.size());
    for (const auto& candidate : candidates) {
        visible.push_back(candidate.window);
    }
    return visible;
}

}  // namespace tessellon
