// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#pragma once

#include "cli/job.h"
#include "cli/options.h"
#include "cli/sizing.h"

namespace lumbrix::cli {

inline constexpr Option WritingOptions[] = {StrictOption,       QualityOption,    CompressionOption, AutoOrientOption,
                                            NoAutoOrientOption, BackgroundOption, StripOption,       KeepProfileOption};

inline constexpr Option ThumbOptions[] = {OnlyShrinkOption,  StrictOption,     QualityOption,
                                          CompressionOption, AutoOrientOption, NoAutoOrientOption,
                                          BackgroundOption,  StripOption,      KeepProfileOption};

inline constexpr Option ResizeOptions[] = {WidthOption,      HeightOption,       FitOption,        PercentOption,
                                           OnlyShrinkOption, StrictOption,       QualityOption,    CompressionOption,
                                           AutoOrientOption, NoAutoOrientOption, BackgroundOption, StripOption,
                                           KeepProfileOption};

int RunConvert(const Arguments& arguments);
int RunThumb(const Arguments& arguments);
int RunResize(const Arguments& arguments);
int RunCrop(const Arguments& arguments);
int RunRotate(const Arguments& arguments);

} // namespace lumbrix::cli
