#include "engine/restore_memory.h"

#include "app/preferences.h"
#include "base/log.h"
#include "base/text.h"
#include "engine/restore_memory_json.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace tessellon {
namespace {

constexpr std::size_t maximumRecords = 200;

// From this many bindings on, every new one first looks for windows that are gone.
constexpr std::size_t bindingsBeforePruning = 50;

// How far a window may stand from its stored frame, in points and strictly less, to be recognised
// in a later run: programs do not come back exactly where they were.
constexpr double recognitionTolerance = 8;

}  // namespace

RestoreMemory::RestoreMemory(const WindowAccess& windows, const Applications& applications,
                             UserDefaults& defaults)
    : windows_(windows), applications_(applications), defaults_(defaults) {
    load();
    edited_ = defaults_.reloaded().subscribe([this] { adoptEdit(); });
}

void RestoreMemory::load() {
    read();
    dropRecordsOfAbsentApplications();
    dropOldest();
    save();
}

void RestoreMemory::read() {
    records_.clear();
    if (!defaults_.objectForKey(preference::restoreMemory)) {
        return;
    }
    const auto data = defaults_.dataForKey(preference::restoreMemory);
    if (auto decoded = data ? decodeMemories(*data) : std::nullopt) {
        records_ = std::move(*decoded);
    } else {
        storedIsSafe_ = defaults_.keepAside(preference::restoreMemory);
    }
}

void RestoreMemory::adoptEdit() {
    const auto stored = defaults_.dataForKey(preference::restoreMemory);
    if (stored && stored == lastSeen_) {
        return;
    }
    read();
    lastSeen_ = stored.value_or(PropertyData());
    dropOldest();
    std::erase_if(bindings_, [this](const Binding& binding) { return !indexOf(binding.id); });
}

void RestoreMemory::dropRecordsOfAbsentApplications() {
    if (records_.empty()) {
        return;  // to find out who is running takes its time, and this is the program's start
    }
    std::unordered_set<std::string> running;
    for (auto& application : applications_.running()) {
        if (application.bundleIdentifier) {
            running.insert(std::move(*application.bundleIdentifier));
        }
    }
    std::erase_if(records_,
                  [&](const Memory& record) { return !running.contains(record.bundleID); });
}

std::optional<std::size_t> RestoreMemory::findMemory(const Element& window) {
    if (const auto id = boundId(window)) {
        if (const auto index = indexOf(*id)) {
            return index;
        }
        unbind(window);
    }

    const auto bundleID = windows_.bundleIdentifier(window);
    if (!bundleID) {
        return std::nullopt;
    }
    std::optional<Rect> frame;
    std::string title;
    for (std::size_t i = records_.size(); i-- > 0;) {
        const auto& record = records_[i];
        if (record.bundleID != *bundleID || isBoundToAny(record.id)) {
            continue;
        }
        // Most windows meet no unbound record of their application, so they are not read before.
        if (!frame) {
            frame = windows_.readFrame(window);
            if (!frame) {
                return std::nullopt;
            }
            title = windows_.title(window);
        }
        if (nearlyEqual(record.snapped, *frame, recognitionTolerance) &&
            equivalent(record.title, title)) {
            bindings_.push_back({window, record.id});
            return i;
        }
    }
    return std::nullopt;
}

bool RestoreMemory::isBound(const Element& window) const {
    const auto id = boundId(window);
    return id && indexOf(*id);
}

std::optional<Rect> RestoreMemory::originalFrame(const Element& window) {
    const auto index = findMemory(window);
    return index ? std::optional(records_[*index].original) : std::nullopt;
}

void RestoreMemory::rememberWindow(const Rect& frame, const Element& window) {
    if (bindings_.size() >= bindingsBeforePruning) {
        prune();
    }
    Memory record{Uuid::random(), windows_.bundleIdentifier(window).value_or(""),
                  windows_.title(window), frame, frame};
    bindings_.push_back({window, record.id});
    records_.push_back(std::move(record));
    dropOldest();
    save();
}

void RestoreMemory::updateMemory(const Rect& frame, const Element& window) {
    const auto index = findMemory(window);
    if (!index) {
        return;
    }
    records_[*index].snapped = frame;
    records_[*index].title = windows_.title(window);
    save();
}

void RestoreMemory::forgetWindow(const Element& window) {
    if (const auto index = findMemory(window)) {
        records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(*index));
    }
    unbind(window);
    save();
}

Token RestoreMemory::deferSaves() {
    ++deferrals_;
    return Token([this] {
        if (--deferrals_ == 0 && std::exchange(unsaved_, false)) {
            store();
        }
    });
}

void RestoreMemory::prune() {
    std::unordered_set<Uuid> dead;
    for (const auto& binding : bindings_) {
        if (!windows_.readFrame(binding.window)) {
            dead.insert(binding.id);
        }
    }
    std::erase_if(bindings_, [&](const Binding& binding) { return dead.contains(binding.id); });
    std::erase_if(records_, [&](const Memory& record) { return dead.contains(record.id); });
}

void RestoreMemory::dropOldest() {
    if (records_.size() <= maximumRecords) {
        return;
    }
    const auto end =
        records_.begin() + static_cast<std::ptrdiff_t>(records_.size() - maximumRecords);
    for (auto record = records_.begin(); record != end; ++record) {
        std::erase_if(bindings_, [&](const Binding& binding) { return binding.id == record->id; });
    }
    records_.erase(records_.begin(), end);
}

void RestoreMemory::unbind(const Element& window) {
    std::erase_if(bindings_, [&](const Binding& binding) { return binding.window == window; });
}

std::optional<std::size_t> RestoreMemory::indexOf(const Uuid& id) const {
    for (std::size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].id == id) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<Uuid> RestoreMemory::boundId(const Element& window) const {
    for (const auto& binding : bindings_) {
        if (binding.window == window) {
            return binding.id;
        }
    }
    return std::nullopt;
}

bool RestoreMemory::isBoundToAny(const Uuid& id) const {
    return std::any_of(bindings_.begin(), bindings_.end(),
                       [&](const Binding& binding) { return binding.id == id; });
}

void RestoreMemory::save() {
    if (deferrals_ > 0) {
        unsaved_ = true;
    } else {
        store();
    }
}

void RestoreMemory::store() {
    storedIsSafe_ = storedIsSafe_ || defaults_.keepAside(preference::restoreMemory);
    if (!storedIsSafe_) {
        return;
    }
    if (auto json = encodeMemories(records_)) {
        lastSeen_ = *json;
        defaults_.setObject(preference::restoreMemory, std::move(*json));
    } else {
        logWarning("the restore memory could not be written");
    }
}

}  // namespace tessellon
