// What kind of window a client says that its window is.
#pragma once

#include "platform/x11/atoms.h"
#include "platform/x11/client_window.h"
#include "platform/x11/properties.h"

#include <functional>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// The kind that a window's _NET_WM_WINDOW_TYPE and WM_TRANSIENT_FOR say; `atom` gives the names of
/// the types as the server knows them.
WindowKind windowKind(const RawProperty& types, const RawProperty& transientFor,
                      const std::function<xcb_atom_t(Atom)>& atom);

}  // namespace tessellon::x11
