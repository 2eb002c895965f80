#include "launcher/launcher.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "base/modifier_flag.h"
#include "base/text.h"
#include "shortcuts/default_shortcuts.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessellon {
namespace {

/// The tiles are in four columns.
constexpr int tilesInRow = 4;

constexpr auto modifiersOfShortcuts =
    modifier_flag::command | modifier_flag::option | modifier_flag::control;

/// In screen coordinates. Where the panel has no room its top left part, which has the search
/// field, stays in sight; an empty area only gives the place.
Rect placedIn(const Rect& area, const Rect& panel) {
    Rect placed{area.midX() - panel.width * 0.5, area.midY() - panel.height * 0.5, panel.width,
                panel.height};
    if (!area.isEmpty()) {
        placed.x = std::max(placed.x, area.minX());
        placed.y = std::min(placed.y, area.maxY() - panel.height);
    }
    return placed;
}

}  // namespace

std::string_view launcherLetter(SnapAction action) {
    const auto key = defaultShortcuts[static_cast<std::size_t>(action)].key;
    const bool isLetter = key.size() == 1 && key.front() >= 'A' && key.front() <= 'Z';
    return isLetter ? key : std::string_view{};
}

Launcher::Launcher(WindowEngine& engine, LauncherViews& views, Beep& beep,
                   NotificationCenter& notifications)
    : engine_(engine), views_(views), beep_(beep), notifications_(notifications) {}

void Launcher::toggle() {
    if (isOpen()) {
        close(Activation::previousApplication);
        return;
    }
    if (!open()) {
        beep_.beep();
    }
}

bool Launcher::open() {
    const auto& services = engine_.services();
    if (services.defaults.boolForKey(preference::paused)) {
        return false;
    }
    const auto reads = services.accessibility.beginReads();
    const auto front = services.applications.frontmost();
    if (!front) {
        return false;
    }
    const auto window = engine_.windows().focusedWindow();
    const auto frame = window ? engine_.windows().readFrame(*window) : std::nullopt;
    if (!frame) {
        return false;
    }

    model_ = std::make_unique<LauncherModel>(
        front->localizedName.empty() ? "Window" : front->localizedName, beep_);
    model_->run = [this, pid = front->pid, window = *window](SnapAction action) {
        close(Activation::previousApplication, pid);
        engine_.snap(action, window);
    };
    const auto screen = engine_.screens().screenFor(*frame);
    const auto area = screen ? screen->visibleFrame : Rect{};
    panel_ = views_.makePanel(*model_, area);
    panel_->setFrame(placedIn(area, panel_->frame()));

    keyMonitor_ =
        services.eventMonitors
            .addLocalKeyMonitor([this](const KeyEvent& event) { return handleKey(event); })
            .value_or(Token());
    resignObserver_ = panel_->resignedKey().subscribe([this] { close(Activation::none); });
    previous_ = front->pid;
    panel_->makeKeyAndOrderFront();
    notifications_.post(notification::tourEvent, std::string("launcher"));
    return true;
}

void Launcher::close(Activation activation, std::optional<Pid> app) {
    if (!isOpen()) {
        return;
    }
    // In this order they go at the end: the panel shows the model.
    const auto model = std::move(model_);
    const auto panel = std::move(panel_);
    keyMonitor_.reset();
    resignObserver_.reset();
    panel->orderOut();
    const auto activated = app ? app : previous_;
    previous_.reset();
    if (activation == Activation::previousApplication && activated) {
        engine_.services().applications.activate(*activated);
    }
}

KeyVerdict Launcher::handleKey(const KeyEvent& event) {
    if (!model_) {
        return KeyVerdict::notUsed;
    }
    switch (event.keyCode & 0xFFFFU) {
        case virtual_key::escape:
            close(Activation::previousApplication);
            return KeyVerdict::used;
        case virtual_key::returnKey:
        case virtual_key::keypadEnter:
            model_->runSelected();
            return KeyVerdict::used;
        case virtual_key::leftArrow:
            model_->move(-1);
            return KeyVerdict::used;
        case virtual_key::rightArrow:
            model_->move(1);
            return KeyVerdict::used;
        case virtual_key::downArrow:
            model_->move(tilesInRow);
            return KeyVerdict::used;
        case virtual_key::upArrow:
            model_->move(-tilesInRow);
            return KeyVerdict::used;
        default:
            return runLetter(event);
    }
}

KeyVerdict Launcher::runLetter(const KeyEvent& event) {
    if (!model_->query().empty() || (event.modifiers & modifiersOfShortcuts) != 0 ||
        event.charactersIgnoringModifiers.empty()) {
        return KeyVerdict::notUsed;
    }
    const auto typed = toUpper(event.charactersIgnoringModifiers);
    const auto* const found =
        std::find_if(allSnapActions.begin(), allSnapActions.end(),
                     [&](SnapAction action) { return launcherLetter(action) == typed; });
    if (found == allSnapActions.end()) {
        return KeyVerdict::notUsed;
    }
    // Running an action closes the launcher, which takes the model and its callback along.
    if (const auto run = model_->run) {
        run(*found);
    }
    return KeyVerdict::used;
}

}  // namespace tessellon
