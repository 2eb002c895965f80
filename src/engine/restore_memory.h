// The frames windows had before they were first snapped, kept across launches, so that they can be
// given back.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "base/uuid.h"
#include "engine/window_access.h"
#include "platform/applications.h"
#include "platform/user_defaults.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

/// One window's record.
struct Memory {
    Uuid id;
    /// "" when the window's application had none.
    std::string bundleID;
    /// The window's title when it was last snapped.
    std::string title;
    /// Before the first snap; restoring returns here.
    Rect original;
    /// After the last snap; the window is recognised by it in a later run.
    Rect snapped;
    bool operator==(const Memory&) const = default;
};

class RestoreMemory {
  public:
    /// Loads the stored records, keeps those whose application is running now, and stores them.
    /// A stored value that cannot be read is kept aside first.
    RestoreMemory(const WindowAccess& windows, const Applications& applications,
                  UserDefaults& defaults);
    RestoreMemory(const RestoreMemory&) = delete;
    RestoreMemory& operator=(const RestoreMemory&) = delete;

    /// The index of a window's record in `records()`, or nothing. A window that is asked about for
    /// the first time in a run is recognised by application, title and frame, and bound to the
    /// record from then on.
    std::optional<std::size_t> findMemory(const Element& window);

    /// Whether a window was found or remembered in this run and still has its record. Reads nothing
    /// of the window.
    bool isBound(const Element& window) const;

    /// The frame that restoring gives back, or nothing without a record.
    std::optional<Rect> originalFrame(const Element& window);

    /// Makes the record of a window that is about to be moved away from `frame` for the first time.
    /// The oldest records beyond the limit go, and those of windows that are gone.
    void rememberWindow(const Rect& frame, const Element& window);

    /// Records the frame that a window took; nothing happens when it has no record.
    void updateMemory(const Rect& frame, const Element& window);

    /// Drops a window's record.
    void forgetWindow(const Element& window);

    /// The records, oldest first.
    const std::vector<Memory>& records() const { return records_; }

    /// While a token lives, changes are not stored; they are stored once, when the last one goes.
    /// Must not outlive this object.
    Token deferSaves();

  private:
    struct Binding {
        Element window;
        Uuid id;
    };

    void load();
    void read();
    void adoptEdit();
    void dropRecordsOfAbsentApplications();
    void save();
    void store();
    void prune();
    void dropOldest();
    void unbind(const Element& window);
    std::optional<std::size_t> indexOf(const Uuid& id) const;
    std::optional<Uuid> boundId(const Element& window) const;
    bool isBoundToAny(const Uuid& id) const;

    const WindowAccess& windows_;
    const Applications& applications_;
    UserDefaults& defaults_;
    std::vector<Memory> records_;
    std::vector<Binding> bindings_;
    int deferrals_ = 0;
    bool unsaved_ = false;
    /// False while the stored value is one that could be neither read nor copied aside.
    bool storedIsSafe_ = true;
    /// The stored value as it was last written or taken over.
    PropertyData lastSeen_;
    Token edited_;
};

}  // namespace tessellon
