#include "platform/memory/memory_user_defaults.h"

#include <utility>

namespace tessellon {

bool MemoryUserDefaults::keepAside(std::string_view key) {
    if (refusesCopies_) {
        return false;
    }
    if (const auto* value = stored(key)) {
        keptAside_.push_back({std::string(key), *value});
    }
    return true;
}

void MemoryUserDefaults::edit(std::string_view key, std::optional<PropertyValue> value) {
    store(key, std::move(value));
    changed_.emit(key);
    reloaded_.emit();
}

const PropertyValue* MemoryUserDefaults::stored(std::string_view key) const {
    const auto found = values_.find(key);
    return found != values_.end() ? &found->second : nullptr;
}

void MemoryUserDefaults::store(std::string_view key, std::optional<PropertyValue> value) {
    if (value) {
        values_.insert_or_assign(std::string(key), std::move(*value));
    } else if (const auto found = values_.find(key); found != values_.end()) {
        values_.erase(found);
    }
}

}  // namespace tessellon
