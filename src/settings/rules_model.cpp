#include "settings/rules_model.h"

#include "app/preferences.h"
#include "base/text.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

constexpr std::string_view bundleEnding = ".app";
constexpr std::string_view entryEnding = ".desktop";

/// The text with every one of them cut out; what that joins to another one stays.
std::string withoutBundleEndings(std::string text) {
    for (auto at = text.find(bundleEnding); at != std::string::npos;
         at = text.find(bundleEnding, at)) {
        text.erase(at, bundleEnding.size());
    }
    return text;
}

/// For people. An application that has no name of its own goes by its identifier, which is shown as
/// it is.
std::string shownName(const InstalledApplication& application) {
    return application.name == application.identifier ? application.name
                                                      : withoutBundleEndings(application.name);
}

/// The text without the ending, in any letter case; nothing when it has another one.
std::optional<std::string> withoutEnding(std::string_view text, std::string_view ending) {
    if (text.size() <= ending.size() ||
        toLower(text.substr(text.size() - ending.size())) != ending) {
        return std::nullopt;
    }
    return std::string(text.substr(0, text.size() - ending.size()));
}

}  // namespace

RulesModel::RulesModel(UserDefaults& defaults, const ApplicationDirectory& directory,
                       const Applications& applications)
    : defaults_(defaults),
      directory_(directory),
      applications_(applications),
      defaultsToken_(defaults.changed().subscribe([this](std::string_view key) {
          if (key == preference::ignored) {
              changed_.emit();
          }
      })) {}

std::vector<IgnoredApplication> RulesModel::entries() const {
    std::vector<IgnoredApplication> entries;
    for (auto& identifier : ignoredApplications(defaults_)) {
        const auto installed = directory_.withIdentifier(identifier);
        IgnoredApplication entry;
        entry.name = installed ? shownName(*installed) : identifier;
        entry.icon = installed ? installed->icon : std::string();
        entry.isInstalled = installed.has_value();
        entry.identifier = std::move(identifier);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string RulesModel::count() const {
    const auto count = ignoredApplications(defaults_).size();
    return count == 1 ? "1 app" : std::to_string(count) + " apps";
}

void RulesModel::setQuery(std::string query) {
    if (query != query_) {
        query_ = std::move(query);
        changed_.emit();
    }
}

void RulesModel::search() {
    const std::string text(trimHorizontalWhitespace(query_));
    if (text.empty()) {
        return;
    }
    if (const auto identifier = find(text)) {
        add(*identifier);
        return;
    }
    error_ = "Couldn't find “" + text +
             "”. Try the exact app name, or leave the field empty and click Add app.";
    changed_.emit();
}

std::optional<std::string> RulesModel::find(const std::string& text) const {
    if (directory_.withIdentifier(text)) {
        return text;
    }
    if (auto identifier = withoutEnding(text, entryEnding);
        identifier && directory_.withIdentifier(*identifier)) {
        return identifier;
    }
    const auto name = withoutEnding(text, bundleEnding).value_or(text);
    for (const auto& each : {name, text}) {
        if (const auto found = directory_.named(each)) {
            return found->identifier;
        }
    }
    // Programs that nobody has installed for the menus are known by their window class.
    for (const auto& running : applications_.running()) {
        const auto& identifier = running.bundleIdentifier;
        if (running.policy == ActivationPolicy::regular && identifier &&
            (*identifier == text || running.localizedName == name ||
             running.localizedName == text)) {
            return identifier;
        }
    }
    return std::nullopt;
}

void RulesModel::add(std::string_view identifier) {
    query_.clear();
    error_.reset();
    auto identifiers = ignoredApplications(defaults_);
    if (std::find(identifiers.begin(), identifiers.end(), identifier) == identifiers.end()) {
        identifiers.emplace_back(identifier);
        setIgnoredApplications(defaults_, identifiers);
    }
    changed_.emit();
}

void RulesModel::remove(std::string_view identifier) {
    auto identifiers = ignoredApplications(defaults_);
    std::erase(identifiers, identifier);
    setIgnoredApplications(defaults_, identifiers);
}

std::vector<ChoosableApplication> RulesModel::choosable() const {
    std::vector<ChoosableApplication> result;
    for (auto& application : directory_.shown()) {
        const bool isListed = isIgnored(defaults_, application.identifier);
        result.push_back({std::move(application), isListed});
    }
    return result;
}

}  // namespace tessellon
