// The conversion job and the batch driver on real files, with the engine behind and a main window that is not there.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "platform/files.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/fakemessages.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tests {

using namespace lumbrix;

using Said = std::vector<std::string>;

// One pixel, white.
inline const std::string
    DotBmp("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0\0\0\0\0"
           "\0\0\0\0\0\0\0\0\0\0\0\0\xFF\xFF\xFF\0",
           58);

class Converting : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        // A picture of four by four pixels and true colour, by way of the engine.
        WriteBytes(folder_ / "dot.bmp", DotBmp);
        ConvertImageToThumbPng(Path("dot.bmp").c_str(), 4, Path("source.png").c_str());
        std::filesystem::remove(folder_ / "dot.bmp");
        order_.sourceFile = Path("source.png");
    }

    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // A folder with its separator.
    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directory(folder_ / name);
        return Path(name) + PathSeparator;
    }

    void Copy(const std::string& name) const { std::filesystem::copy_file(folder_ / "source.png", folder_ / name); }

    int32_t HeightOf(const std::string& name) const {
        int32_t width = 0;
        int32_t height = 0;
        GetImageDimensions(Path(name).c_str(), &width, &height);
        return height;
    }

    std::string Start(const std::string& name) const { return ReadBytes(folder_ / name).substr(0, 2); }

    FakeOrder order_;
    FakeMessages messages_;
    PixelRectangle cropRectangle_;
    TemporaryFolder folder_;
};

} // namespace tests
