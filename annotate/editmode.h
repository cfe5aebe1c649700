// The three jobs of the annotate and crop window, and the titles by which they are asked for.
#pragma once

#include <string>
#include <string_view>

namespace lumbrix {

enum class EditMode {
    Annotate,
    Crop,
    Cropped, // shows the result of a crop, no more
};

inline constexpr const char* AnnotateTitle = "Annotate image";
inline constexpr const char* CropTitle = "Crop image";
inline constexpr const char* CroppedTitle = "Cropped image";

// The title of the window: without one it is asked to annotate.
inline std::string TitleOrAnnotate(const std::string& title) { return title.empty() ? AnnotateTitle : title; }

// The job that a title asks for; an unknown title leaves it as it was.
constexpr EditMode EditModeForTitle(std::string_view title, EditMode current) {
    if (title == AnnotateTitle) {
        return EditMode::Annotate;
    }
    if (title == CropTitle) {
        return EditMode::Crop;
    }
    return title == CroppedTitle ? EditMode::Cropped : current;
}

} // namespace lumbrix
