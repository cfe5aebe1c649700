// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#pragma once

#include "cli/job.h"
#include "cli/options.h"
#include "cli/sizing.h"

namespace lumbrix::cli {

// How a file is written.
inline constexpr Option EncodingOptions[] = {StrictOption, QualityOption, CompressionOption};

// What else becomes of the picture, and of what is told of it.
inline constexpr Option AdjustingOptions[] = {AutoOrientOption, NoAutoOrientOption, BackgroundOption, StripOption,
                                              KeepProfileOption};

inline constexpr Option ThumbOptions[] = {OnlyShrinkOption};
inline constexpr Option SizeOptions[] = {WidthOption, HeightOption, FitOption, PercentOption, OnlyShrinkOption};

int RunConvert(const Arguments& arguments);
int RunThumb(const Arguments& arguments);
int RunResize(const Arguments& arguments);
int RunCrop(const Arguments& arguments);
int RunRotate(const Arguments& arguments);

} // namespace lumbrix::cli
