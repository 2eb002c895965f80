// Gives a shortcut new keys: what the user presses next becomes the combination. One recorder is
// shared by everything that shows shortcuts; views read its state and are told when that changes.
#pragma once

#include "base/notification_center.h"
#include "base/signal.h"
#include "base/token.h"
#include "platform/beep.h"
#include "platform/event_monitors.h"
#include "platform/key_event.h"
#include "platform/keyboard_focus.h"
#include "platform/own_application.h"
#include "shortcuts/hotkey_target.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/key_combo.h"

#include <optional>
#include <string>

namespace tessellon {

class Recorder {
  public:
    /// All of them must outlive the recorder.
    struct Services {
        KeyBindings& bindings;
        Hotkeys& hotkeys;
        EventMonitors& eventMonitors;
        KeyboardFocus& keyboardFocus;
        OwnApplication& application;
        Beep& beep;
        NotificationCenter& notifications;
    };

    explicit Recorder(const Services& services);
    /// The shortcuts work again even when a recording was in progress.
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Starts recording keys for the target, in place of any other; ends the recording when it is
    /// this target's. All global shortcuts rest meanwhile, and every key goes to the recording,
    /// also those of combinations that other programs hold. It ends by itself once our window is
    /// not the active one any more, or once there is no such target.
    void toggle(const HotkeyTarget& target);

    /// Ends the recording, if there is one, without changing anything.
    void stop();

    /// The target whose keys are awaited.
    const std::optional<HotkeyTarget>& target() const { return target_; }
    /// One line for the user about the latest recording.
    const std::optional<std::string>& note() const { return note_; }
    /// Grows whenever the hot keys were registered anew: shortcuts and those that are taken may be
    /// others now.
    int revision() const { return revision_; }

    /// What is to be shown of a target: its name, the combination it has now, whether that
    /// combination is somebody else's, and the name of the other target if it is that one's.
    std::string title(const HotkeyTarget& target) const { return services_.bindings.title(target); }
    std::optional<KeyCombo> comboFor(const HotkeyTarget& target) const {
        return services_.bindings.comboFor(target);
    }
    bool isTaken(const HotkeyTarget& target) const {
        return services_.hotkeys.takenTargets().contains(target);
    }
    std::optional<std::string> holderTitle(const HotkeyTarget& target) const;

    /// Emitted after target, note or revision has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    void begin(const HotkeyTarget& target);
    bool end();
    void stopWithoutTarget();
    void onKey(const KeyEvent& event);
    void suggestModifier(const KeyEvent& event);

    Services services_;
    std::optional<HotkeyTarget> target_;
    std::optional<std::string> note_;
    int revision_ = 0;
    Token monitor_;
    Token resignObserver_;
    Token hotkeysChanged_;
    Token willReset_;
    Token arrangementsChanged_;
    Token reloaded_;
    Signal<> changed_;
};

}  // namespace tessellon
