#include "app/preferences.h"

#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessellon {
namespace {

std::vector<std::string> parseLines(std::string_view text) {
    std::vector<std::string> entries;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto entry = trimHorizontalWhitespace(text.substr(0, end));
        if (!entry.empty()) {
            entries.emplace_back(entry);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return entries;
}

double nonNegative(const UserDefaults& defaults, std::string_view key) {
    return std::max(defaults.doubleForKey(key), 0.0);
}

}  // namespace

void registerPreferenceDefaults(UserDefaults& defaults) {
    PropertyDictionary values;
    const auto put = [&values](std::string_view key, PropertyValue value) {
        values.emplace(key, std::move(value));
    };
    put(preference::paused, false);
    put(preference::gap, 8.0);
    put(preference::padding, 8.0);
    put(preference::cycle, true);
    put(preference::restoreOnDrag, true);
    put(preference::dragEnabled, true);
    put(preference::ignored, std::string());
    put(preference::almostPadding, 40.0);
    put(preference::showPreview, true);
    put(preference::ignoreSmall, true);
    put(preference::onboarded, false);
    put(preference::tilingEnabled, false);
    put(preference::maxTiles, 4.0);
    put(preference::masterRatio, 60.0);
    defaults.registerDefaults(values);
}

std::vector<std::string> ignoredApplications(const UserDefaults& defaults) {
    return parseLines(defaults.stringForKey(preference::ignored).value_or(""));
}

bool isIgnored(const UserDefaults& defaults, std::string_view bundleIdentifier) {
    const auto entries = ignoredApplications(defaults);
    return std::find(entries.begin(), entries.end(), bundleIdentifier) != entries.end();
}

void toggleIgnored(UserDefaults& defaults, std::string_view bundleIdentifier) {
    auto entries = ignoredApplications(defaults);
    const auto found = std::find(entries.begin(), entries.end(), bundleIdentifier);
    if (found != entries.end()) {
        entries.erase(found);
    } else {
        entries.emplace_back(bundleIdentifier);
    }
    setIgnoredApplications(defaults, entries);
}

void setIgnoredApplications(UserDefaults& defaults, const std::vector<std::string>& identifiers) {
    std::string text;
    for (const auto& identifier : identifiers) {
        if (!text.empty()) {
            text += '\n';
        }
        text += identifier;
    }
    defaults.setString(preference::ignored, std::move(text));
}

std::map<std::string, double> displayPaddingOverrides(const UserDefaults& defaults) {
    std::map<std::string, double> overrides;
    const auto stored = defaults.dictionaryForKey(preference::displayPadding);
    if (!stored) {
        return overrides;
    }
    for (const auto& [display, value] : *stored) {
        const auto padding = value.number();
        if (!padding) {
            return {};
        }
        if (std::isfinite(*padding)) {
            overrides.emplace(display, std::max(*padding, 0.0));
        }
    }
    return overrides;
}

void setDisplayPaddingOverrides(UserDefaults& defaults,
                                const std::map<std::string, double>& overrides) {
    PropertyDictionary values;
    for (const auto& [display, padding] : overrides) {
        values.emplace(display, padding);
    }
    defaults.setObject(preference::displayPadding, std::move(values));
}

int effectiveMaxTiles(const UserDefaults& defaults) {
    return static_cast<int>(
        std::clamp(std::trunc(defaults.doubleForKey(preference::maxTiles)), 2.0, 8.0));
}

double effectiveMasterShare(const UserDefaults& defaults) {
    return std::clamp(defaults.doubleForKey(preference::masterRatio), 30.0, 80.0) / 100;
}

double effectiveGap(const UserDefaults& defaults) {
    return nonNegative(defaults, preference::gap);
}

double effectivePadding(const UserDefaults& defaults) {
    return nonNegative(defaults, preference::padding);
}

double effectiveAlmostPadding(const UserDefaults& defaults) {
    return nonNegative(defaults, preference::almostPadding);
}

}  // namespace tessellon
