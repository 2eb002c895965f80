// The settings: their keys, what they are while the user has chosen nothing, and the readers that
// more than one part of the program needs. A setting that changes counts from the next action on,
// because nobody remembers what it was.
#pragma once

#include "platform/user_defaults.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

namespace preference {
inline constexpr std::string_view paused = "paused";
inline constexpr std::string_view gap = "gap";
inline constexpr std::string_view padding = "padding";
inline constexpr std::string_view cycle = "cycle";
inline constexpr std::string_view restoreOnDrag = "restoreOnDrag";
inline constexpr std::string_view dragEnabled = "dragEnabled";
inline constexpr std::string_view ignored = "ignored";
inline constexpr std::string_view almostPadding = "almostPadding";
inline constexpr std::string_view showPreview = "showPreview";
inline constexpr std::string_view ignoreSmall = "ignoreSmall";
inline constexpr std::string_view onboarded = "onboarded";
inline constexpr std::string_view tilingEnabled = "tilingEnabled";
inline constexpr std::string_view maxTiles = "maxTiles";
inline constexpr std::string_view masterRatio = "masterRatio";

// Not registered: absent until first written.
inline constexpr std::string_view displayPadding = "displayPadding";
inline constexpr std::string_view keymap = "keymap";
inline constexpr std::string_view arrangements = "arrangements";
inline constexpr std::string_view restoreMemory = "restoreMemory";
/// Whether the program looks for newer versions by itself; when it last looked, in seconds since
/// 1970; and the version that the user has been told of.
inline constexpr std::string_view automaticUpdateChecks = "automaticUpdateChecks";
inline constexpr std::string_view lastUpdateCheck = "lastUpdateCheck";
inline constexpr std::string_view announcedVersion = "announcedVersion";
}  // namespace preference

/// Registers the 14 defaults. Called once at launch, before anything reads a key.
void registerPreferenceDefaults(UserDefaults& defaults);

/// The bundle identifiers of the applications whose windows never snap, in stored order.
std::vector<std::string> ignoredApplications(const UserDefaults& defaults);

/// Whether an application's windows never snap; exact, case-sensitive comparison.
bool isIgnored(const UserDefaults& defaults, std::string_view bundleIdentifier);

/// Adds the identifier at the end of the ignored list, or removes its first occurrence.
void toggleIgnored(UserDefaults& defaults, std::string_view bundleIdentifier);

/// Stores an ignored list.
void setIgnoredApplications(UserDefaults& defaults, const std::vector<std::string>& identifiers);

/// Own edge gaps of displays in points, by display identifier. Negative values read as 0; one value
/// that is not a number makes the whole map empty; one that is not finite is left out.
std::map<std::string, double> displayPaddingOverrides(const UserDefaults& defaults);

/// Stores the whole map of own edge gaps.
void setDisplayPaddingOverrides(UserDefaults& defaults,
                                const std::map<std::string, double>& overrides);

/// The largest number of windows that tiling arranges: whole, 2 to 8.
int effectiveMaxTiles(const UserDefaults& defaults);

/// The master window's share of the width when tiling: 0.3 to 0.8.
double effectiveMasterShare(const UserDefaults& defaults);

/// The gap between windows in points, never negative.
double effectiveGap(const UserDefaults& defaults);

/// The edge gap of displays that have no own one, in points, never negative.
double effectivePadding(const UserDefaults& defaults);

/// The margin of almost-maximize in points, never negative.
double effectiveAlmostPadding(const UserDefaults& defaults);

}  // namespace tessellon
