#include "settings/arrangements_model.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "arrangements/apply.h"
#include "arrangements/capture.h"
#include "base/text.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

constexpr std::size_t mostNames = 4;

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace

ArrangementsModel::ArrangementsModel(const SettingsServices& services)
    : services_(services), list_(services.arrangements.load()) {
    saved_ = services_.notifications.observe(notification::arrangementsChanged,
                                             [this](const auto& /*object*/) { reload(); });
    // Nobody posts anything when the user edits the settings file.
    settingChanged_ = services_.defaults.changed().subscribe([this](std::string_view key) {
        if (key == preference::arrangements) {
            reload();
        }
    });
}

void ArrangementsModel::reload() {
    auto list = services_.arrangements.load();
    if (list != list_) {
        list_ = std::move(list);
        changed_.emit();
    }
}

std::string ArrangementsModel::count() const {
    return counted(list_.size(), "arrangement");
}

std::string ArrangementsModel::summary(const Arrangement& arrangement) const {
    std::vector<std::string> identifiers;
    for (const auto& placement : arrangement.placements) {
        if (std::ranges::find(identifiers, placement.bundleID) == identifiers.end()) {
            identifiers.push_back(placement.bundleID);
        }
    }
    auto text = counted(arrangement.placements.size(), "window");
    const auto named = std::min(identifiers.size(), mostNames);
    for (std::size_t i = 0; i < named; ++i) {
        text += (i == 0 ? " · " : ", ") + applicationName(identifiers[i]);
    }
    if (identifiers.size() > named) {
        text += " +" + std::to_string(identifiers.size() - named);
    }
    return text;
}

std::string ArrangementsModel::spokenName(std::size_t index) const {
    const auto& name = list_[index].name;
    auto number = "arrangement " + std::to_string(index + 1);
    if (trimWhitespace(plainText(name)).empty()) {
        return number;
    }
    return std::ranges::count(list_, name, &Arrangement::name) > 1 ? name + ", " + number : name;
}

void ArrangementsModel::save() {
    const auto name = nextArrangementName(list_.size());
    const auto captured = captureArrangement(services_.engine, name);
    if (!captured) {
        message_ = "No windows to save. Open some app windows first.";
    } else {
        addArrangement(services_.arrangements, *captured);
        message_ = findArrangement(list_, captured->id) != nullptr
                       ? "Saved “" + name + "” with " +
                             counted(captured->placements.size(), "window") + "."
                       : "The arrangement could not be stored.";
    }
    changed_.emit();
}

void ArrangementsModel::rename(const Uuid& id, std::string_view name) {
    renameArrangement(services_.arrangements, id, name);
}

void ArrangementsModel::apply(const Uuid& id) {
    if (const auto* const arrangement = findArrangement(list_, id)) {
        applyArrangement(services_.engine, *arrangement);
    }
}

void ArrangementsModel::remove(const Uuid& id) {
    services_.recorder.stop();
    removeArrangement(services_.arrangements, id);
    services_.hotkeys.registerChangedBindings();
}

std::string ArrangementsModel::applicationName(const std::string& identifier) const {
    const auto installed = services_.directory.withIdentifier(identifier);
    return installed ? installed->name : identifier;
}

}  // namespace tessellon
