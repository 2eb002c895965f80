#include "shortcuts/hotkey_target.h"

namespace tessellon {

std::string HotkeyTarget::targetID() const {
    if (const auto* snap = std::get_if<Snap>(&kind)) {
        return "snap." + std::string(rawValue(snap->action));
    }
    if (const auto* arrangement = std::get_if<Arrangement>(&kind)) {
        return "arrangement." + arrangement->id.toString();
    }
    return "tile";
}

}  // namespace tessellon

std::size_t std::hash<tessellon::HotkeyTarget>::operator()(
    const tessellon::HotkeyTarget& target) const noexcept {
    using Target = tessellon::HotkeyTarget;
    if (const auto* arrangement = std::get_if<Target::Arrangement>(&target.kind)) {
        return std::hash<tessellon::Uuid>{}(arrangement->id);
    }
    if (const auto* snap = std::get_if<Target::Snap>(&target.kind)) {
        return static_cast<std::size_t>(snap->action);
    }
    return tessellon::allSnapActions.size();
}
