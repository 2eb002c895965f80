// A recorder over a desktop in memory, and hands that type into it.
#pragma once

#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "platform/memory/memory_own_application.h"
#include "shortcuts/recorder.h"
#include "shortcuts/shortcuts_fixture.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tessellon {

class RecorderFixture : public ShortcutsTest {
  protected:
    RecorderFixture() {
        hotkeys.setHandler([](const HotkeyTarget&) {});
        application.setKeyWindowFrame(window);
        recorder = std::make_unique<Recorder>(Recorder::Services{
            bindings, hotkeys, monitors, keyboardFocus, application, beep, notifications});
    }

    static constexpr Rect window{100, 200, 600, 400};
    static constexpr auto hint = "Add ⌃, ⌥ or ⌘ so it doesn't clash with typing.";

    KeyVerdict type(std::uint32_t keyCode, std::uint64_t modifiers = 0, std::string typed = {}) {
        KeyEvent event;
        event.keyCode = keyCode;
        event.modifiers = modifiers;
        event.charactersIgnoringModifiers = std::move(typed);
        return monitors.type(event);
    }

    /// Nothing is recorded, and nothing that a recording needs is left behind.
    bool isIdle() const {
        return !recorder->target() && monitors.keyMonitorCount() == 0 && !keyboardFocus.isTaken() &&
               !hotkeys.recordingPause() && center.registeredCount() > 0;
    }
    bool isRecording(const HotkeyTarget& target) const {
        return recorder->target() == target && monitors.keyMonitorCount() == 1 &&
               hotkeys.recordingPause() && center.registeredCount() == 0;
    }
    std::string shortcut(SnapAction action) const { return bindings.shortcutText(action); }

    const HotkeyTarget left = snap(SnapAction::leftHalf);
    const HotkeyTarget right = snap(SnapAction::rightHalf);

    MemoryDesktop desktop;
    MemoryEventMonitors monitors{desktop};
    MemoryKeyboardFocus keyboardFocus;
    MemoryOwnApplication application;
    MemoryBeep beep;
    std::unique_ptr<Recorder> recorder;
};

}  // namespace tessellon
