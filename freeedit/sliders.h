// The two sliders of the Free Edit window: their ranges, which of their events count, and what their labels say.
#pragma once

#include <string>

namespace lumbrix {

struct SliderRange {
    int least;
    int most;
    int start;
};

inline constexpr SliderRange StretchRange{0, 500, 100};   // hundredths
inline constexpr SliderRange RotationRange{-180, 180, 0}; // degrees

// The platform's numbers.
enum class SliderCode : int {
    PageUp = 2,
    PageDown = 3,
    ThumbTrack = 5,
    EndTrack = 8,
};

constexpr bool IsSliderMove(int code) {
    const auto slider = static_cast<SliderCode>(code);
    return slider == SliderCode::EndTrack || slider == SliderCode::ThumbTrack || slider == SliderCode::PageUp ||
           slider == SliderCode::PageDown;
}

constexpr float StretchOfPosition(int position) { return static_cast<float>(position / 100.0); }

inline std::string StretchText(int position) {
    const std::string hundredths = std::to_string(100 + position % 100).substr(1);
    return "Stretch: " + std::to_string(position / 100) + "." + hundredths;
}

inline std::string RotationText(int position) { return "Rotate: " + std::to_string(position); }

} // namespace lumbrix
