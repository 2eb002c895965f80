#include "base/notification_center.h"

#include <utility>

namespace tessellon {

Token NotificationCenter::observe(std::string_view name, Observer observer) {
    return signals_[std::string(name)].subscribe(std::move(observer));
}

void NotificationCenter::post(std::string_view name, const Object& object) const {
    if (const auto found = signals_.find(name); found != signals_.end()) {
        found->second.emit(object);
    }
}

}  // namespace tessellon
