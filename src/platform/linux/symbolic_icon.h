// Where panels find the program's symbolic icon, the one they draw in a color of their own.
#pragma once

#include <filesystem>
#include <optional>

namespace tessellon {

/// The icon's name. GTK colors icons whose name ends so; Qt desktops color what its style sheet
/// marks as text.
inline constexpr const char* symbolicIconName = "tessellon-symbolic";

/// The folder of icon themes that holds the icon: the one it was installed into along with
/// `program`, else one below `runtimeFolder`, where it is put; it is gone when the user logs out.
/// Nothing when neither can be had.
std::optional<std::filesystem::path> symbolicIconFolder(
    const std::filesystem::path& program,
    const std::optional<std::filesystem::path>& runtimeFolder);

}  // namespace tessellon
