// Numbers that are the same on every machine for the same seed; the distributions of the standard
// library are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessellon::stress {

class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        // SplitMix64: Steele, Lea and Flood, "Fast Splittable Pseudorandom Number Generators".
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t value = state_;
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    /// 0 … count - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }
    /// first … last.
    int between(int first, int last) {
        return first + static_cast<int>(below(static_cast<std::size_t>(last - first + 1)));
    }
    bool chance(int percent) { return between(1, 100) <= percent; }

    template <typename List>
    const auto& pick(const List& list) {
        return list[below(list.size())];
    }

  private:
    std::uint64_t state_;
};

}  // namespace tessellon::stress
