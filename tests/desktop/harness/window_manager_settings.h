// The settings that each window manager gets on a private desktop: two workspaces where it has a
// number of them, no panel of its own, and, where the tests ask for that, none of its key
// combinations that they use.
#pragma once

#include "harness/window_manager.h"

#include <filesystem>

namespace tessellon::desktop {

void configureOpenbox(const std::filesystem::path& home, WindowManagerKeys keys);
void configureXfwm4(const std::filesystem::path& home, WindowManagerKeys keys);
void configureMetacity(const std::filesystem::path& home, WindowManagerKeys keys);
void configureMarco(const std::filesystem::path& home, WindowManagerKeys keys);
void configureMuffin(const std::filesystem::path& home, WindowManagerKeys keys);
void configureMutter(const std::filesystem::path& home, WindowManagerKeys keys);
void configureKwin(const std::filesystem::path& home, WindowManagerKeys keys);
void configureFluxbox(const std::filesystem::path& home, WindowManagerKeys keys);
void configureIcewm(const std::filesystem::path& home, WindowManagerKeys keys);
void configureJwm(const std::filesystem::path& home, WindowManagerKeys keys);
void configureI3(const std::filesystem::path& home, WindowManagerKeys keys);

}  // namespace tessellon::desktop
