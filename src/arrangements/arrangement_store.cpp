#include "arrangements/arrangement_store.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "arrangements/arrangement_json.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

/// Has the first stored arrangement with this id changed, and saves the list if there is one.
template <typename Change>
void changeArrangement(ArrangementStore& store, const Uuid& id, Change change) {
    auto arrangements = store.load();
    const auto found = std::ranges::find(arrangements, id, &Arrangement::id);
    if (found != arrangements.end()) {
        change(*found);
        store.save(arrangements);
    }
}

}  // namespace

ArrangementStore::ArrangementStore(UserDefaults& defaults, NotificationCenter& notifications)
    : defaults_(defaults), notifications_(notifications) {}

std::vector<Arrangement> ArrangementStore::load() const {
    return read().value_or(std::vector<Arrangement>{});
}

void ArrangementStore::save(std::span<const Arrangement> arrangements) {
    if (auto json = encodeArrangements(arrangements)) {
        const bool isSafe = !defaults_.objectForKey(preference::arrangements) || read() ||
                            defaults_.keepAside(preference::arrangements);
        if (isSafe) {
            defaults_.setObject(preference::arrangements, *std::move(json));
        }
    }
    notifications_.post(notification::arrangementsChanged);
}

std::optional<std::vector<Arrangement>> ArrangementStore::read() const {
    auto data = defaults_.dataForKey(preference::arrangements);
    if (!data) {
        return std::nullopt;
    }
    if (*data != decodedFrom_) {
        decoded_ = decodeArrangements(*data);
        decodedFrom_ = *std::move(data);
    }
    return decoded_;
}

const Arrangement* findArrangement(std::span<const Arrangement> arrangements, const Uuid& id) {
    const auto found = std::ranges::find(arrangements, id, &Arrangement::id);
    return found != arrangements.end() ? &*found : nullptr;
}

std::string nextArrangementName(std::size_t count) {
    return "Arrangement " + std::to_string(count + 1);
}

void addArrangement(ArrangementStore& store, Arrangement arrangement) {
    auto arrangements = store.load();
    arrangements.push_back(std::move(arrangement));
    store.save(arrangements);
}

void renameArrangement(ArrangementStore& store, const Uuid& id, std::string_view name) {
    changeArrangement(store, id, [name](Arrangement& found) { found.name = name; });
}

void setArrangementCombo(ArrangementStore& store, const Uuid& id,
                         const std::optional<KeyCombo>& combo) {
    changeArrangement(store, id, [&combo](Arrangement& found) { found.combo = combo; });
}

void removeArrangement(ArrangementStore& store, const Uuid& id) {
    auto arrangements = store.load();
    std::erase_if(arrangements, [&id](const Arrangement& a) { return a.id == id; });
    store.save(arrangements);
}

}  // namespace tessellon
