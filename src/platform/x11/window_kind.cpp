#include "platform/x11/window_kind.h"

#include <array>
#include <utility>

namespace tessellon::x11 {

WindowKind windowKind(const RawProperty& types, const RawProperty& transientFor,
                      const std::function<xcb_atom_t(Atom)>& atom) {
    const std::array<std::pair<xcb_atom_t, WindowKind>, 14> table{{
        {atom(Atom::netWmWindowTypeNormal), WindowKind::standard},
        {atom(Atom::netWmWindowTypeDialog), WindowKind::dialog},
        {atom(Atom::netWmWindowTypeUtility), WindowKind::floating},
        {atom(Atom::netWmWindowTypeToolbar), WindowKind::floating},
        {atom(Atom::netWmWindowTypeMenu), WindowKind::floating},
        {atom(Atom::netWmWindowTypeSplash), WindowKind::splash},
        {atom(Atom::netWmWindowTypeDropdownMenu), WindowKind::passing},
        {atom(Atom::netWmWindowTypePopupMenu), WindowKind::passing},
        {atom(Atom::netWmWindowTypeTooltip), WindowKind::passing},
        {atom(Atom::netWmWindowTypeNotification), WindowKind::passing},
        {atom(Atom::netWmWindowTypeCombo), WindowKind::passing},
        {atom(Atom::netWmWindowTypeDnd), WindowKind::passing},
        {atom(Atom::netWmWindowTypeDock), WindowKind::dock},
        {atom(Atom::netWmWindowTypeDesktop), WindowKind::desktop},
    }};
    // The list is in the client's order of preference; types we do not know are passed over.
    for (const auto type : cardinals(types)) {
        for (const auto& [known, kind] : table) {
            if (known == type) {
                return kind;
            }
        }
    }
    // EWMH: a window without a type that is transient for another one is a dialog.
    const bool isTransient = firstCardinal(transientFor).value_or(0) != 0;
    return isTransient ? WindowKind::dialog : WindowKind::standard;
}

}  // namespace tessellon::x11
