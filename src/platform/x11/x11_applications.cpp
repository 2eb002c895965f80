#include "platform/x11/x11_applications.h"

#include "base/text.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace tessellon::x11 {
namespace {

ActivationPolicy policyOf(const ClientWindow& window) {
    const bool works = window.kind == WindowKind::standard || window.kind == WindowKind::dialog ||
                       window.kind == WindowKind::floating;
    return works ? ActivationPolicy::regular : ActivationPolicy::accessory;
}

/// An identifier in a form that lists of identifiers, one a line, can hold.
std::string asIdentifier(std::string_view name) {
    std::string identifier = sanitizedUtf8(name);
    std::replace_if(
        identifier.begin(), identifier.end(),
        [](char c) { return (c >= 0 && c < ' ') || c == 0x7f; }, ' ');
    return std::string(trimWhitespace(identifier));
}

}  // namespace

X11Applications::X11Applications(const Connection& connection, WindowMirror& mirror,
                                 const ApplicationDirectory& directory, ExecutableOf executableOf)
    : connection_(connection),
      mirror_(mirror),
      directory_(directory),
      executableOf_(std::move(executableOf)) {}

RunningApplication X11Applications::describe(const ClientWindow& window) const {
    RunningApplication application;
    application.pid = window.pid;
    application.policy = policyOf(window);
    ApplicationHints hints;
    hints.gtkApplicationId = window.gtkApplicationId;
    hints.windowInstance = window.windowClass.instance;
    hints.windowClass = window.windowClass.name;
    if (window.pid > 0) {
        hints.executable = executableOf_(window.pid).value_or("");
    }
    if (const auto installed = directory_.lookUp(hints)) {
        application.bundleIdentifier = asIdentifier(installed->identifier);
        application.localizedName = installed->name;
        return application;
    }
    const auto own = asIdentifier(window.windowClass.name.empty() ? window.windowClass.instance
                                                                  : window.windowClass.name);
    if (!own.empty()) {
        application.bundleIdentifier = own;
    }
    application.localizedName = own.empty() ? window.title : own;
    return application;
}

void X11Applications::update() const {
    mirror_.look();
    if (revision_ == mirror_.identityRevision()) {
        return;
    }
    running_.clear();
    indexOfPid_.clear();
    // An application is what its oldest window says it is; one window to work with is enough to
    // make it a regular one.
    for (const auto* window : mirror_.managed()) {
        const auto [found, isNew] = indexOfPid_.try_emplace(window->pid, running_.size());
        if (isNew) {
            running_.push_back(describe(*window));
        } else if (policyOf(*window) == ActivationPolicy::regular) {
            running_[found->second].policy = ActivationPolicy::regular;
        }
    }
    revision_ = mirror_.identityRevision();
}

std::vector<RunningApplication> X11Applications::running() const {
    update();
    return running_;
}

std::optional<RunningApplication> X11Applications::withPid(Pid pid) const {
    update();
    const auto found = indexOfPid_.find(pid);
    if (found == indexOfPid_.end()) {
        return std::nullopt;
    }
    return running_[found->second];
}

std::optional<RunningApplication> X11Applications::frontmost() const {
    update();
    const auto* active = mirror_.activeWindow();
    return active != nullptr ? withPid(active->pid) : std::nullopt;
}

void X11Applications::activate(Pid pid) {
    update();
    const auto* active = mirror_.activeWindow();
    if (active != nullptr && active->pid == pid) {
        return;
    }
    // The window that is in front of the application's others is the one that was used last.
    for (const auto* window : mirror_.stacking()) {
        if (window->pid == pid && policyOf(*window) == ActivationPolicy::regular &&
            mirror_.isOnCurrentDesktop(*window) && !window->hiddenState) {
            constexpr std::uint32_t sourcePager = 2;  // EWMH: a tool acting for the user
            connection_.sendToWindowManager(
                window->id, Atom::netActiveWindow,
                {sourcePager, XCB_CURRENT_TIME, active != nullptr ? active->id : 0, 0, 0});
            xcb_flush(connection_.xcb());
            return;
        }
    }
}

Pid X11Applications::ownPid() const {
    return getpid();
}

}  // namespace tessellon::x11
