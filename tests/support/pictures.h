// Pictures made up for tests, and ways to look into them.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/core/bitmap.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tests {

constexpr imaginglibrary::Color Black = 0xFF000000;
constexpr imaginglibrary::Color White = 0xFFFFFFFF;
constexpr imaginglibrary::Color Red = 0xFFFF0000;
constexpr imaginglibrary::Color Green = 0xFF00FF00;
constexpr imaginglibrary::Color Blue = 0xFF0000FF;

// A picture with gradients, hard edges and, where the format can, every kind of alpha. Indexed formats get a palette
// of all their entries in distinct colours.
std::shared_ptr<imaginglibrary::Bitmap> MakePicture(imaginglibrary::PixelFormat format, std::uint32_t width,
                                                    std::uint32_t height);

// A true-colour picture with one colour per pixel given by a function of x and y.
std::shared_ptr<imaginglibrary::Bitmap>
MakePictureOf(std::uint32_t width, std::uint32_t height,
              const std::function<imaginglibrary::Color(std::uint32_t x, std::uint32_t y)>& colorAt);

std::shared_ptr<imaginglibrary::Bitmap> WhitePicture(std::uint32_t width, std::uint32_t height);

// All pixels as 0xAARRGGBB from the top left on; fails the test and gives back none where the rows cannot be read.
std::vector<imaginglibrary::Color> ColorsOf(const imaginglibrary::PixelSource& picture);

// The same laid over white, as a format without alpha must show it.
std::vector<imaginglibrary::Color> ColorsOverWhite(const imaginglibrary::PixelSource& picture);

// Reads all rows and gives back the first status that is not Ok, or Ok.
imaginglibrary::Status ReadAllRows(const imaginglibrary::PixelSource& picture);

// Expects that two readers of the picture, one running ahead of the other, both deliver its rows.
void ExpectIndependentReaders(const imaginglibrary::PixelSource& picture);

// Opens a file with one codec's own open function, or with the codec its signature names.
imaginglibrary::Result<std::unique_ptr<imaginglibrary::Decoder>> OpenPicture(const std::filesystem::path& path);
imaginglibrary::Result<std::unique_ptr<imaginglibrary::Decoder>> OpenPicture(const imaginglibrary::Codec& codec,
                                                                             const std::filesystem::path& path);

// Writes with one codec and commits.
imaginglibrary::Status WritePicture(const imaginglibrary::Codec& codec, const imaginglibrary::PixelSource& picture,
                                    const std::filesystem::path& path);

// The greatest difference of any channel of any pixel, and the peak signal-to-noise ratio in dB over red, green, blue.
// Both fail the test where the sizes differ.
int GreatestDifference(const std::vector<imaginglibrary::Color>& a, const std::vector<imaginglibrary::Color>& b);
double PeakSignalToNoise(const std::vector<imaginglibrary::Color>& a, const std::vector<imaginglibrary::Color>& b);

} // namespace tests
