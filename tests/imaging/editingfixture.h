// The exported procedures with the real imaging library behind; what they wrote is judged by the decoders on their own.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "imaginglibrary/core/geometry.h"
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace tests {

using namespace imaginglibrary;

class Editing : public testing::Test {
  protected:
    void SetUp() override { LoadImagingLibrary(); }
    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    std::string Make(const std::string& name, const PixelSource& picture, const Codec& codec = PngCodec()) const {
        EXPECT_EQ(WritePicture(codec, picture, folder_ / name), Status::Ok);
        return Path(name);
    }

    std::string MakeWhite(const std::string& name, std::uint32_t width, std::uint32_t height) const {
        return Make(name, *MakePictureOf(width, height, [](auto, auto) { return White; }));
    }

    std::unique_ptr<Decoder> Open(const std::string& name) const {
        auto picture = OpenPicture(folder_ / name);
        EXPECT_TRUE(picture.Ok()) << name;
        return picture.Ok() ? std::move(*picture) : nullptr;
    }

    std::vector<Color> Pixels(const std::string& name) const { return ColorsOf(*Open(name)); }

    void ExpectSize(const std::string& name, std::uint32_t width, std::uint32_t height) const {
        const auto picture = Open(name);
        EXPECT_EQ(picture->Info().width, width);
        EXPECT_EQ(picture->Info().height, height);
    }

    int32_t Annotate(const std::string& source, const std::string& target, float x, float y, const char* text,
                     int32_t size = 40, int32_t alpha = 255, const char* font = "Arial") const {
        return AnnotateImage(source.c_str(), Path(target).c_str(), x, y, text, font, size, 0, 0, 0, 0, alpha, 0, 0,
                             255);
    }

    TemporaryFolder folder_;
};

} // namespace tests
