#include "drag/drag_snapper.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "base/modifier_flag.h"
#include "drag/drag_switch.h"
#include "engine/placement.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace tessellon {
namespace {

/// How far a window may shift or grow, in points, and still count as not moved or not resized.
constexpr double slack = 2;

/// From the release of the button to the snap: the window manager has to see the release as well
/// and let go of the window.
constexpr Seconds dropDelay{0.05};

/// From a look at a window that has no clear frame to the next one.
constexpr Seconds retryDelay{0.1};

constexpr std::uint32_t leftButton = 1;

bool isWithinSlack(Point a, Point b) {
    return std::abs(a.x - b.x) <= slack && std::abs(a.y - b.y) <= slack;
}

bool isWithinSlack(Size a, Size b) {
    return std::abs(a.width - b.width) <= slack && std::abs(a.height - b.height) <= slack;
}

/// Whether a pixel of the pointer is on a screen. In coordinates whose y goes up the bottom edge of
/// a pixel names it, so the screen's top edge belongs to it and the bottom one does not.
bool holdsPointer(const Rect& frame, Point point) {
    return point.x >= frame.minX() && point.x < frame.maxX() && point.y > frame.minY() &&
           point.y <= frame.maxY();
}

/// The preview's own idea of where an action goes. It differs from the engine's in almost-maximize
/// only, whose margin is a preference there.
std::optional<Rect> previewUnit(SnapAction action) {
    if (action == SnapAction::almostMaximize) {
        return Rect{0.05, 0.05, 0.9, 0.9};
    }
    return unitRect(action);
}

}  // namespace

DragSnapper::DragSnapper(WindowEngine& engine, DragViews& views, RunLoop& runLoop,
                         NotificationCenter& notifications)
    : engine_(engine),
      runLoop_(runLoop),
      notifications_(notifications),
      overlay_(views),
      hints_(engine.services().displays, views),
      displaysChanged_(
          engine.services().displays.changed().subscribe([this] { screensAreStale_ = true; })) {}

void DragSnapper::start() {
    if (!monitors_.empty()) {
        return;
    }
    auto& events = engine_.services().eventMonitors;
    const auto keep = [this](std::optional<Token> monitor) {
        if (monitor) {
            monitors_.push_back(std::move(*monitor));
        }
    };
    // No local monitor for drags: moving one of our own windows is no gesture.
    keep(events.addGlobalMonitor(MonitoredEvent::leftMouseDragged, [this] { onDragged(); }));
    keep(events.addGlobalMonitor(MonitoredEvent::leftMouseUp, [this] { onMouseUp(); }));
    keep(events.addLocalMonitor(MonitoredEvent::leftMouseUp, [this] { onMouseUp(); }));
    keep(events.addGlobalMonitor(MonitoredEvent::flagsChanged, [this] { onFlagsChanged(); }));
    keep(events.addLocalMonitor(MonitoredEvent::flagsChanged, [this] { onFlagsChanged(); }));
}

void DragSnapper::reset() {
    captured_ = false;
    window_.reset();
    startFrame_.reset();
    startedMaximized_ = false;
    awaitsShadow_ = false;
    moving_ = false;
    gridShown_ = false;
    beginsWithPress_ = (engine_.services().eventMonitors.pressedMouseButtons() & leftButton) == 0;
    clearCandidate();
    hints_.hide();
}

bool DragSnapper::isSwitchedOn() const {
    return isDragSwitchedOn(engine_.services().defaults);
}

void DragSnapper::onDragged() {
    if (!isSwitchedOn()) {
        reset();
    } else if ((engine_.services().eventMonitors.pressedMouseButtons() & leftButton) == 0) {
        drop();  // the release itself got lost
    } else if (!captured_) {
        capture();
    } else if (moving_) {
        track();
    } else if (window_ && startFrame_) {
        recognise();
    } else if (window_) {
        const auto reads = engine_.services().accessibility.beginReads();
        readStart();
    }
}

void DragSnapper::onMouseUp() {
    drop();
}

void DragSnapper::onFlagsChanged() {
    if (!moving_) {
        return;
    }
    if (isSwitchedOn()) {
        track();
    } else {
        reset();
    }
}

void DragSnapper::capture() {
    captured_ = true;
    const auto& services = engine_.services();
    const auto reads = services.accessibility.beginReads();
    if (const auto pointer = services.eventMonitors.pointerLocation()) {
        window_ =
            engine_.windows().windowUnderPointer(engine_.screens().toAccessibilityPoint(*pointer));
    }
    if (!window_) {
        window_ = engine_.windows().focusedWindow();
    }
    if (window_) {
        readStart();
    }
}

/// A window manager may be pulling a maximized window out already. The state is read first: with an
/// older state than the frame's nothing is lost, with a newer one the change of the size would look
/// like a resize. While the size is changing there is no frame, but there will be.
void DragSnapper::readStart() {
    startedMaximized_ = engine_.windows().readBool(*window_, Attribute::maximized) == true;
    startFrame_ = engine_.windows().readFrame(*window_);
    if (!startFrame_ || !beginsWithPress_) {
        return;
    }
    // It may have followed the motion that we have only just heard of. With another size it is no
    // longer what was pressed.
    const auto pressed = engine_.services().accessibility.frameAtPress(*window_);
    if (pressed && isWithinSlack(pressed->size(), startFrame_->size())) {
        startFrame_ = pressed;
    }
}

void DragSnapper::recognise() {
    {
        const auto reads = engine_.services().accessibility.beginReads();
        const auto frame = engine_.windows().readFrame(*window_);
        if (!frame || isWithinSlack(frame->origin(), startFrame_->origin())) {
            return;
        }
        if (!isWithinSlack(frame->size(), startFrame_->size()) && !isCarriedMaximized(*frame)) {
            if (startedMaximized_) {
                followUnmaximizing(*frame);
            } else if (awaitsShadow_ && frame->width < startFrame_->width &&
                       frame->height < startFrame_->height) {
                awaitsShadow_ = false;
                startFrame_ = frame;
            } else {
                window_.reset();  // it is being resized; that is none of our business
            }
            return;
        }
        moving_ = true;
        if (engine_.services().defaults.boolForKey(preference::restoreOnDrag)) {
            restoreSize();
        }
    }
    track();
}

/// Place and size of a maximized window that is pulled away change together. Whether it is moved
/// from there is seen by what follows.
void DragSnapper::followUnmaximizing(const Rect& frame) {
    if (engine_.windows().readBool(*window_, Attribute::maximized) != true) {
        startFrame_ = frame;
        startedMaximized_ = false;
        // A program that draws its own decorations says a moment later how much of its new size is
        // shadow, which a maximized window has none of.
        awaitsShadow_ = true;
    }
}

/// Some window managers take a maximized window from display to display as it is, and it is as
/// large as each of them.
bool DragSnapper::isCarriedMaximized(const Rect& frame) const {
    if (!startedMaximized_ || engine_.windows().readBool(*window_, Attribute::maximized) != true) {
        return false;
    }
    const auto from = engine_.screens().screenFor(*startFrame_);
    const auto to = engine_.screens().screenFor(frame);
    return from && to && from->id != to->id;
}

void DragSnapper::restoreSize() {
    const auto original = engine_.memory().originalFrame(*window_);
    if (!original) {
        return;
    }
    if (isFinite(*original) && !original->isEmpty()) {
        engine_.services().accessibility.writeDraggedSize(*window_, original->size());
    }
    engine_.memory().forgetWindow(*window_);
}

const Screen* DragSnapper::screenAt(Point point) {
    if (screensAreStale_) {
        screensAreStale_ = false;
        screens_ = engine_.services().displays.screens();
    }
    for (const auto& screen : screens_) {
        if (holdsPointer(screen.frame, point)) {
            return &screen;
        }
    }
    return nullptr;
}

void DragSnapper::track() {
    const auto& services = engine_.services();
    const bool isCommandHeld =
        (services.eventMonitors.modifierFlags() & modifier_flag::command) != 0;
    if (!services.defaults.boolForKey(preference::dragEnabled) || !isCommandHeld) {
        if (gridShown_) {
            gridShown_ = false;
            hints_.hide();
            clearCandidate();
        }
        return;
    }
    if (!gridShown_) {
        gridShown_ = true;
        // The grid is laid out anew, in what docks leave of the screens now.
        screensAreStale_ = true;
        clearCandidate();
        hints_.show();
    }
    const auto pointer = services.eventMonitors.pointerLocation();
    const Screen* const screen = pointer ? screenAt(*pointer) : nullptr;
    const auto action = screen != nullptr ? ZoneHints::zoneAt(*screen, *pointer) : std::nullopt;
    if (!action) {
        if (candidate_) {
            hints_.clearActive();
            clearCandidate();
        }
        return;
    }
    if (pending_ && candidate_ && candidate_->action == *action &&
        candidate_->screen == screen->id) {
        return;
    }
    candidate_ = Candidate{*action, screen->id};
    hints_.setActive(*action, *screen);
    showCandidate(*action, *screen);
}

std::optional<Rect> DragSnapper::landingFrame(SnapAction action, const Screen& screen) const {
    const auto& services = engine_.services();
    if (const auto unit = previewUnit(action)) {
        return placeUnit(*unit, engine_.screens().usableFrame(screen),
                         effectiveGap(services.defaults));
    }
    if (action != SnapAction::center || !window_) {
        return std::nullopt;
    }
    const auto reads = services.accessibility.beginReads();
    const auto current = engine_.windows().readFrame(*window_);
    if (!current) {
        return std::nullopt;
    }
    return placeCentered(*current, engine_.screens().usableFrame(screen));
}

void DragSnapper::showCandidate(SnapAction action, const Screen& screen) {
    const auto frame = landingFrame(action, screen);
    pending_ = frame ? std::optional(action) : std::nullopt;
    // A window manager that is behind the hand may be changing the window at this moment.
    retry_ = frame ? Token() : runLoop_.after(retryDelay, [this] { track(); });
    if (frame && engine_.services().defaults.boolForKey(preference::showPreview)) {
        // A preview that is up moves to its new place; hiding it in between would make it flicker.
        overlay_.show(action, engine_.screens().toAccessibilityRect(*frame));
    } else {
        overlay_.hide();
    }
}

void DragSnapper::clearCandidate() {
    candidate_.reset();
    pending_.reset();
    retry_.reset();
    overlay_.hide();
}

void DragSnapper::drop() {
    if (moving_ && window_ && pending_ && !isBackAtStart()) {
        scheduleSnap(*pending_, *window_);
    }
    reset();
}

/// The window manager puts a window back when its drag is given up (by Escape, usually). The size
/// tells nothing: the window may have got its original one in the drag.
bool DragSnapper::isBackAtStart() const {
    const auto reads = engine_.services().accessibility.beginReads();
    const auto origin = engine_.windows().readPoint(*window_, Attribute::position);
    return origin && isWithinSlack(*origin, startFrame_->origin());
}

void DragSnapper::scheduleSnap(SnapAction action, const Element& window) {
    const auto done = scheduledSnaps_.begin() + static_cast<std::ptrdiff_t>(snapsDone_);
    scheduledSnaps_.erase(scheduledSnaps_.begin(), done);
    snapsDone_ = 0;
    // The size that the window was to get back during the drag would only be in the snap's way.
    const auto hold =
        std::make_shared<Token>(engine_.services().accessibility.holdDraggedSize(window));
    scheduledSnaps_.push_back(runLoop_.after(dropDelay, [this, action, window, hold] {
        ++snapsDone_;
        engine_.snap(action, window);
        hold->reset();
        notifications_.post(notification::tourEvent, std::string("drag"));
    }));
}

}  // namespace tessellon
