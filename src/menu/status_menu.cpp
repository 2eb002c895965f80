#include "menu/status_menu.h"

#include "arrangements/apply.h"
#include "arrangements/capture.h"
#include "base/modifier_flag.h"

#include <string_view>
#include <utility>

namespace tessellon {
namespace {

// The press that makes the panel lose the keyboard may arrive as a press of the item as well.
constexpr Seconds pauseAfterClose{0.3};

// How often to look whether the button that closed the panel is up, and for how long: the release
// of a button whose device was unplugged is never told.
constexpr Seconds releasePeriod{0.05};
constexpr Seconds longestHold{5};

/// Whether a key types `character`, or has the place of that key in a layout of another script.
bool isKey(const KeyEvent& event, std::string_view character, std::uint32_t place) {
    if (event.layoutIsLatin) {
        return event.charactersIgnoringModifiers == character;
    }
    return (event.keyCode & 0xFFFFU) == place && (event.modifiers & modifier_flag::shift) == 0;
}

bool holdsOnlyCommand(const KeyEvent& event) {
    return (event.modifiers & modifier_flag::all) == modifier_flag::command &&
           !event.isOnFurtherLevel;
}

}  // namespace

StatusMenu::StatusMenu(const Services& services, std::function<void()> openSettings)
    : services_(services),
      openSettings_(std::move(openSettings)),
      pressed_(services.item.activated().subscribe([this] { toggle(); })) {}

void StatusMenu::toggle() {
    if (isOpen()) {
        close();
        return;
    }
    if (closedAt_ && services_.runLoop.uptime() - *closedAt_ <= pauseAfterClose) {
        return;
    }
    show();
}

void StatusMenu::show() {
    if (isOpen()) {
        return;
    }
    const auto target = findTarget();
    auto& engine = services_.engine;
    const auto snapping = target.window && engine.services().accessibility.isTrusted()
                              ? Snapping::available
                              : Snapping::unavailable;
    model_ = std::make_unique<MenuModel>(target.application, snapping, engine.lastSnap(),
                                         engine.services().defaults, services_.arrangements);
    setCallbacks(target.window);
    const auto anchor = findAnchor();
    panel_ = services_.views.makePanel(*model_, anchor.visible);
    if (!panel_) {
        model_.reset();
        return;
    }
    panel_->setFrame(menuPanelFrame(anchor, panel_->frame().size()));
    watch();
    services_.item.setHighlighted(true);
    panel_->makeKeyAndOrderFront();
}

void StatusMenu::close() {
    if (!isOpen()) {
        return;
    }
    // In this order they go at the end: the panel shows the model.
    const auto model = std::move(model_);
    const auto panel = std::move(panel_);
    closedAt_ = services_.runLoop.uptime();
    monitors_.clear();
    resignObserver_.reset();
    panel->orderOut();
    services_.item.setHighlighted(false);
    awaitRelease();
}

/// Some trays tell of a press of the item once the button is up. However long it was held, a press
/// that closed the panel must not open it again.
void StatusMenu::awaitRelease() {
    const auto isHeld = [this] {
        return services_.engine.services().eventMonitors.pressedMouseButtons() != 0;
    };
    if (!isHeld()) {
        release_.reset();
        return;
    }
    const auto giveUpAt = services_.runLoop.uptime() + longestHold;
    release_ = services_.runLoop.every(releasePeriod, [this, isHeld, giveUpAt] {
        const auto now = services_.runLoop.uptime();
        closedAt_ = now;
        if (!isHeld() || now >= giveUpAt) {
            release_.reset();
        }
    });
}

StatusMenu::Target StatusMenu::findTarget() const {
    auto& engine = services_.engine;
    const auto& services = engine.services();
    const auto reads = services.accessibility.beginReads();
    auto front = services.applications.frontmost();
    if (!front || front->pid == services.applications.ownPid()) {
        return {};
    }
    return {std::move(front), engine.windows().focusedWindow()};
}

MenuAnchor StatusMenu::findAnchor() const {
    const auto& services = services_.engine.services();
    const auto item = services_.item.frame();
    const auto pointer = item ? std::nullopt : services.eventMonitors.pointerLocation();
    return menuAnchor(services.displays, services_.engine.screens(), item, pointer);
}

void StatusMenu::watch() {
    auto& eventMonitors = services_.engine.services().eventMonitors;
    const auto keep = [this](std::optional<Token> token) {
        if (token) {
            monitors_.push_back(*std::move(token));
        }
    };
    keep(eventMonitors.addGlobalMonitor(MonitoredEvent::mouseDown, [this] { onMouseDown(); }));
    keep(eventMonitors.addLocalMonitor(MonitoredEvent::mouseDown, [this] { onMouseDown(); }));
    keep(eventMonitors.addLocalKeyMonitor([this](const KeyEvent& event) { return onKey(event); }));
    resignObserver_ = panel_->resignedKey().subscribe([this] { close(); });
}

void StatusMenu::setCallbacks(const std::optional<Element>& window) {
    model_->snap = [this, window](SnapAction action) {
        closeThen([this, window, action] {
            if (window) {
                services_.engine.snap(action, *window);
            }
        });
    };
    model_->settings = [this] { closeThen(openSettings_); };
    model_->checkUpdates = [this] { closeThen([this] { services_.updater.checkForUpdates(); }); };
    model_->apply = [this](const Arrangement& arrangement) {
        closeThen([this, arrangement] { applyArrangement(services_.engine, arrangement); });
    };
    model_->save = [this] { saveArrangement(); };
    model_->tile = [this] { closeThen([this] { services_.engine.tile(); }); };
    model_->quit = [this] { closeThen([this] { services_.application.terminate(); }); };
}

void StatusMenu::closeThen(const std::function<void()>& effect) {
    close();
    effect();
}

void StatusMenu::onMouseDown() {
    if (!isOpen()) {
        return;
    }
    // The pointer lies on the top left corner of its pixel, so the edges are told apart where y
    // grows downward.
    const auto& screens = services_.engine.screens();
    const auto location = services_.engine.services().eventMonitors.pointerLocation();
    const auto isIn = [&](const Rect& frame) {
        return location &&
               screens.toAccessibilityRect(frame).contains(screens.toAccessibilityPoint(*location));
    };
    const auto item = services_.item.frame();
    if (!isIn(panel_->frame()) && !(item && isIn(*item))) {
        close();
    }
}

KeyVerdict StatusMenu::onKey(const KeyEvent& event) {
    if (!isOpen()) {
        return KeyVerdict::notUsed;
    }
    if ((event.keyCode & 0xFFFFU) == virtual_key::escape) {
        close();
        return KeyVerdict::used;
    }
    if ((event.modifiers & modifier_flag::command) == 0) {
        return KeyVerdict::notUsed;
    }
    if (isKey(event, ",", virtual_key::comma)) {
        closeThen(openSettings_);
        return KeyVerdict::used;
    }
    if (holdsOnlyCommand(event) && isKey(event, "q", virtual_key::q)) {
        closeThen([this] { services_.application.terminate(); });
        return KeyVerdict::used;
    }
    return KeyVerdict::notUsed;
}

void StatusMenu::saveArrangement() {
    auto& store = services_.arrangements;
    auto arrangement =
        captureArrangement(services_.engine, nextArrangementName(store.load().size()));
    close();
    if (!arrangement) {
        services_.beep.beep();
        return;
    }
    addArrangement(store, *std::move(arrangement));
}

}  // namespace tessellon
