// The pages of the settings window.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tessellon {

enum class SettingsPage : std::uint8_t {
    general,
    zones,
    shortcuts,
    arrangements,
    rules,
    displays,
    about,
};

/// In the order in which the sidebar lists them.
inline constexpr std::array allSettingsPages{
    SettingsPage::general,      SettingsPage::zones, SettingsPage::shortcuts,
    SettingsPage::arrangements, SettingsPage::rules, SettingsPage::displays,
    SettingsPage::about,
};

/// For the user.
constexpr std::string_view title(SettingsPage page) {
    switch (page) {
        case SettingsPage::general:
            return "General";
        case SettingsPage::zones:
            return "Snap zones";
        case SettingsPage::shortcuts:
            return "Shortcuts";
        case SettingsPage::arrangements:
            return "Arrangements";
        case SettingsPage::rules:
            return "Rules";
        case SettingsPage::displays:
            return "Displays";
        case SettingsPage::about:
            break;
    }
    return "About";
}

}  // namespace tessellon
