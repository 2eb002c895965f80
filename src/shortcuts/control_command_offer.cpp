#include "shortcuts/control_command_offer.h"

#include "app/notification_names.h"

#include <utility>

namespace tessellon {

ControlCommandOffer::ControlCommandOffer(KeyBindings& bindings, Hotkeys& hotkeys,
                                         NotificationCenter& notifications)
    : bindings_(bindings), hotkeys_(hotkeys) {
    update();
    hotkeysChanged_ = notifications.observe(notification::hotkeysChanged,
                                            [this](const auto& /*object*/) { update(); });
}

void ControlCommandOffer::accept() {
    bindings_.useControlCommand();
}

void ControlCommandOffer::update() {
    if (hotkeys_.recordingPause()) {
        return;  // nothing is registered, which says nothing
    }
    const bool isDue = !hotkeys_.takenTargets().empty() && !bindings_.usesControlCommand();
    if (std::exchange(isDue_, isDue) != isDue) {
        changed_.emit();
    }
}

}  // namespace tessellon
