// What the welcome tour lets the user try.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessellon {

struct Tour {
    /// The ways to snap, in the order in which they are to be tried.
    enum class Event : std::uint8_t { shortcut, drag, launcher };

    static constexpr std::array allEvents{Event::shortcut, Event::drag, Event::launcher};

    /// The text under which notification::tourEvent carries the event.
    static constexpr std::string_view rawValue(Event event) {
        switch (event) {
            case Event::shortcut:
                return "shortcut";
            case Event::drag:
                return "drag";
            case Event::launcher:
                break;
        }
        return "launcher";
    }

    /// Nothing for any other text.
    static constexpr std::optional<Event> fromRawValue(std::string_view text) {
        for (const auto event : allEvents) {
            if (rawValue(event) == text) {
                return event;
            }
        }
        return std::nullopt;
    }
};

}  // namespace tessellon
