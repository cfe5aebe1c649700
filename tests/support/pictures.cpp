// Pictures made up for tests, and ways to look into them.
#include "tests/support/pictures.h"

#include "imaginglibrary/core/rowconverter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace tests {

using namespace imaginglibrary;

namespace {

// A smooth ramp with a hard-edged box in it, and alpha that runs from clear to opaque.
Color ColorAt(std::uint32_t x, std::uint32_t y, std::uint32_t width, std::uint32_t height) {
    const auto ramp = [](std::uint32_t at, std::uint32_t size) {
        return static_cast<std::uint8_t>(size > 1 ? at * 255 / (size - 1) : 200);
    };
    const bool inBox = x >= width / 3 && x < width * 2 / 3 && y >= height / 4 && y < height / 2;
    if (inBox) {
        return MakeColor(250, 20, 60, 255);
    }
    return MakeColor(ramp(x, width), ramp(y, height), static_cast<std::uint8_t>((x * 7 + y * 3) % 256),
                     ramp((x + y) % 32, 32));
}

std::size_t Channels(PixelFormat format) { return BitsPerPixel(format) / 8; }

void SetPixel(std::uint8_t* row, std::uint32_t x, PixelFormat format, Color color, std::uint32_t index) {
    const std::uint8_t channels[4] = {BlueOf(color), GreenOf(color), RedOf(color), AlphaOf(color)};
    switch (format) {
    case PixelFormat::Indexed1:
        row[x / 8] |= static_cast<std::uint8_t>((index & 1) << (7 - x % 8));
        break;
    case PixelFormat::Indexed4:
        row[x / 2] |= static_cast<std::uint8_t>((index & 15) << (x % 2 == 0 ? 4 : 0));
        break;
    case PixelFormat::Indexed8:
        row[x] = static_cast<std::uint8_t>(index);
        break;
    case PixelFormat::Rgb555:
    case PixelFormat::Rgb565:
    case PixelFormat::Argb1555: {
        const bool six = format == PixelFormat::Rgb565;
        unsigned value = channels[0] >> 3;
        value |= six ? static_cast<unsigned>(channels[1] >> 2) << 5 : static_cast<unsigned>(channels[1] >> 3) << 5;
        value |= static_cast<unsigned>(channels[2] >> 3) << (six ? 11 : 10);
        if (format == PixelFormat::Argb1555 && channels[3] >= 128) {
            value |= 0x8000;
        }
        const auto stored = static_cast<std::uint16_t>(value);
        std::memcpy(row + 2 * x, &stored, sizeof stored);
        break;
    }
    case PixelFormat::Rgb48:
        for (std::size_t i = 0; i < 3; ++i) {
            const auto stored = static_cast<std::uint16_t>(channels[i] * 257);
            std::memcpy(row + 6 * x + 2 * i, &stored, sizeof stored);
        }
        break;
    case PixelFormat::Pargb32:
        for (std::size_t i = 0; i < 3; ++i) {
            row[4 * x + i] = static_cast<std::uint8_t>((channels[i] * channels[3] + 127) / 255);
        }
        row[4 * x + 3] = channels[3];
        break;
    default:
        std::memcpy(row + Channels(format) * x, channels, Channels(format));
        break;
    }
}

std::vector<Color> ColorsAs(const PixelSource& picture, PixelFormat target) {
    const PictureInfo& info = picture.Info();
    const RowConverter converter(info, target);
    std::vector<std::uint8_t> row(BytesPerRow(info.format, info.width));
    std::vector<Color> colors(std::size_t{info.width} * info.height);
    auto rows = picture.OpenRows();
    if (!rows.Ok()) {
        ADD_FAILURE() << "no rows, status " << static_cast<int>(rows.GetStatus());
        return {};
    }
    for (std::size_t y = 0; y < info.height; ++y) {
        if (const Status status = (*rows)->ReadRow(row.data()); status != Status::Ok) {
            ADD_FAILURE() << "row " << y << " not read, status " << static_cast<int>(status);
            return {};
        }
        converter.Convert(row.data(), reinterpret_cast<std::uint8_t*>(&colors[y * info.width]));
    }
    return colors;
}

bool SameSize(const std::vector<Color>& a, const std::vector<Color>& b) {
    EXPECT_EQ(a.size(), b.size());
    return a.size() == b.size();
}

} // namespace

std::shared_ptr<Bitmap> MakePicture(PixelFormat format, std::uint32_t width, std::uint32_t height) {
    PictureInfo info{.width = width, .height = height, .format = format};
    if (IsIndexed(format)) {
        const std::uint32_t entries = 1u << BitsPerPixel(format);
        for (std::uint32_t i = 0; i < entries; ++i) {
            const std::uint32_t step = 256 / entries;
            info.palette.push_back(MakeColor(static_cast<std::uint8_t>(i * step),
                                             static_cast<std::uint8_t>(255 - i * step),
                                             static_cast<std::uint8_t>(i * 37)));
        }
    }
    auto bitmap = *Bitmap::Create(std::move(info));
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            SetPixel(bitmap->Row(y), x, format, ColorAt(x, y, width, height), x + y * 5);
        }
    }
    return bitmap;
}

std::shared_ptr<Bitmap> MakePictureOf(std::uint32_t width, std::uint32_t height,
                                      const std::function<Color(std::uint32_t x, std::uint32_t y)>& colorAt) {
    auto bitmap = *Bitmap::Create({.width = width, .height = height, .format = PixelFormat::Argb32});
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            SetPixel(bitmap->Row(y), x, PixelFormat::Argb32, colorAt(x, y), 0);
        }
    }
    return bitmap;
}

std::shared_ptr<Bitmap> WhitePicture(std::uint32_t width, std::uint32_t height) {
    return MakePictureOf(width, height, [](auto, auto) { return White; });
}

std::vector<Color> ColorsOf(const PixelSource& picture) { return ColorsAs(picture, PixelFormat::Argb32); }

std::vector<Color> ColorsOverWhite(const PixelSource& picture) { return ColorsAs(picture, PixelFormat::Rgb32); }

Status ReadAllRows(const PixelSource& picture) {
    auto rows = picture.OpenRows();
    if (!rows.Ok()) {
        return rows.GetStatus();
    }
    std::vector<std::uint8_t> row(BytesPerRow(picture.Info().format, picture.Info().width));
    for (std::uint32_t y = 0; y < picture.Info().height; ++y) {
        if (const Status status = (*rows)->ReadRow(row.data()); status != Status::Ok) {
            return status;
        }
    }
    return Status::Ok;
}

void ExpectIndependentReaders(const PixelSource& picture) {
    const auto whole = *Bitmap::Copy(picture);
    auto ahead = picture.OpenRows();
    auto behind = picture.OpenRows();
    ASSERT_TRUE(ahead.Ok() && behind.Ok());
    std::vector<std::uint8_t> row(whole->RowBytes());
    const auto isRow = [&](std::uint32_t y) { return std::equal(row.begin(), row.end(), whole->Row(y)); };
    for (std::uint32_t y = 0; y < picture.Info().height; ++y) {
        ASSERT_EQ((*ahead)->ReadRow(row.data()), Status::Ok);
        EXPECT_TRUE(isRow(y));
        if (y % 2 == 1) {
            ASSERT_EQ((*behind)->ReadRow(row.data()), Status::Ok);
            EXPECT_TRUE(isRow(y / 2));
        }
    }
}

Result<std::unique_ptr<Decoder>> OpenPicture(const std::filesystem::path& path) {
    auto file = InputFile::Open(path.u16string());
    if (!file.Ok()) {
        return file.GetStatus();
    }
    const Codec* codec = FindCodecFor(**file);
    if (codec == nullptr) {
        return UndecodableContent;
    }
    return codec->open(*file);
}

Result<std::unique_ptr<Decoder>> OpenPicture(const Codec& codec, const std::filesystem::path& path) {
    auto file = InputFile::Open(path.u16string());
    if (!file.Ok()) {
        return file.GetStatus();
    }
    return codec.open(*file);
}

Status WritePicture(const Codec& codec, const PixelSource& picture, const std::filesystem::path& path) {
    auto file = OutputFile::Create(path.u16string());
    if (!file.Ok()) {
        return file.GetStatus();
    }
    const Status status = codec.write(picture, {}, {}, **file);
    return status == Status::Ok ? (*file)->Commit() : status;
}

int GreatestDifference(const std::vector<Color>& a, const std::vector<Color>& b) {
    if (!SameSize(a, b)) {
        return std::numeric_limits<int>::max();
    }
    int greatest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            const int difference = static_cast<int>((a[i] >> shift) & 255) - static_cast<int>((b[i] >> shift) & 255);
            greatest = std::max(greatest, std::abs(difference));
        }
    }
    return greatest;
}

double PeakSignalToNoise(const std::vector<Color>& a, const std::vector<Color>& b) {
    if (!SameSize(a, b)) {
        return 0;
    }
    double squares = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (unsigned shift = 0; shift < 24; shift += 8) {
            const double difference =
                static_cast<double>((a[i] >> shift) & 255) - static_cast<double>((b[i] >> shift) & 255);
            squares += difference * difference;
        }
    }
    const double mean = squares / (static_cast<double>(a.size()) * 3);
    return mean == 0 ? std::numeric_limits<double>::infinity() : 10 * std::log10(255.0 * 255.0 / mean);
}

} // namespace tests
