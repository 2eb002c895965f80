// Who owns a selection, and when that changes: how compositors and trays say that they are there
// (ICCCM 2.8, manager selections).
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/x11/connection.h"

#include <cstdint>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// The owner of a selection, or none. One round trip.
xcb_window_t selectionOwner(const Connection& connection, xcb_atom_t selection);

class SelectionWatch {
  public:
    /// Begins to watch; without the XFixes extension nothing is ever told. The connection must
    /// outlive this object.
    SelectionWatch(const Connection& connection, xcb_atom_t selection);
    SelectionWatch(const SelectionWatch&) = delete;
    SelectionWatch& operator=(const SelectionWatch&) = delete;

    /// Emitted from the action side after the owner has changed or died.
    const Signal<>& changed() const { return changed_; }

  private:
    const Connection& connection_;
    Signal<> changed_;
    Token listener_;
};

}  // namespace tessellon::x11
