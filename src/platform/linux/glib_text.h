// Text that GLib has allocated, freed with its owner.
#pragma once

#include <memory>

#include <glib.h>

namespace tessellon {

struct GFreeDeleter {
    void operator()(void* memory) const { g_free(memory); }
};
using GText = std::unique_ptr<char, GFreeDeleter>;

}  // namespace tessellon
