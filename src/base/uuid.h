// Universally unique identifiers in the canonical text form of RFC 4122.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessellon {

class Uuid {
  public:
    /// All zero.
    Uuid() = default;

    /// A fresh random identifier (version 4).
    static Uuid random();

    /// Reads the 36-character form in either case; nothing for any other text.
    static std::optional<Uuid> parse(std::string_view text);

    /// The identifier that `name` always gives (version 5), for things that bring no UUID of their
    /// own but some bytes that stay the same.
    static Uuid fromName(std::string_view name);

    /// The 36-character form in upper case.
    std::string toString() const;

    auto operator<=>(const Uuid&) const = default;

  private:
    friend struct std::hash<Uuid>;
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace tessellon

template <>
struct std::hash<tessellon::Uuid> {
    std::size_t operator()(const tessellon::Uuid& id) const noexcept;
};
