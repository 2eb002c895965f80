// Owning pointers for what xcb hands out with malloc: replies, errors and events.
#pragma once

#include <cstdlib>
#include <memory>

namespace tessellon::x11 {

struct FreeDeleter {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// A reply, or null when the request failed, as it does for a window that has just died.
template <typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

}  // namespace tessellon::x11
