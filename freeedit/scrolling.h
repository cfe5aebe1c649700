// How the canvas is panned by its scroll bars.
#pragma once

#include <cstdint>
#include <optional>

namespace lumbrix {

// A scroll bar's range, and the step of its page areas.
inline constexpr std::int32_t LeastPan = -1000;
inline constexpr std::int32_t MostPan = 1000;
inline constexpr std::int32_t PanPage = 50;

// The platform's numbers, which are the same for both bars.
enum class ScrollCode : int {
    LineBack = 0, // up, or to the left
    LineForward = 1,
    PageBack = 2,
    PageForward = 3,
    ThumbMoved = 5, // and still held
};

// The step of a bar's arrows.
enum class ScrollLine : std::int32_t {
    Vertical = 5,
    Horizontal = 50,
};

struct ScrollEvent {
    ScrollCode code;
    std::uint16_t thumb; // where the thumb was moved to, as a number without a sign
};

// Where the bar goes to, which may be beyond its range; nothing for an event that does not move it. A thumb in the
// negative half counts as one near 65536.
constexpr std::optional<std::int32_t> ScrolledPosition(const ScrollEvent& event, std::int32_t position,
                                                       std::int32_t page, ScrollLine line) {
    switch (event.code) {
    case ScrollCode::LineBack:
        return position - static_cast<std::int32_t>(line);
    case ScrollCode::LineForward:
        return position + static_cast<std::int32_t>(line);
    case ScrollCode::PageBack:
        return position - page;
    case ScrollCode::PageForward:
        return position + page;
    case ScrollCode::ThumbMoved:
        return event.thumb;
    default:
        return std::nullopt;
    }
}

} // namespace lumbrix
