// The offer to hold the shortcuts with ⌃⌘ instead of ⌃⌥, made to users on whose desktop some of the
// built-in ones belong to another program.
#pragma once

#include "base/notification_center.h"
#include "base/signal.h"
#include "base/token.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"

namespace tessellon {

class ControlCommandOffer {
  public:
    /// All three must outlive the offer.
    ControlCommandOffer(KeyBindings& bindings, Hotkeys& hotkeys, NotificationCenter& notifications);
    ControlCommandOffer(const ControlCommandOffer&) = delete;
    ControlCommandOffer& operator=(const ControlCommandOffer&) = delete;

    /// Whether to make it: a shortcut is taken, and accepting would change some. While a shortcut
    /// is recorded it stays as it was before.
    bool isDue() const { return isDue_; }

    /// Ends a recording in progress, binds the shortcuts and registers them.
    void accept();

    /// Emitted after isDue() has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    void update();

    KeyBindings& bindings_;
    Hotkeys& hotkeys_;
    bool isDue_ = false;
    Signal<> changed_;
    Token hotkeysChanged_;
};

}  // namespace tessellon
