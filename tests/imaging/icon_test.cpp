// Icons of pictures, taken apart by hand, and read again by the reader of icons.
#include "tests/imaging/editingfixture.h"

#include <cstring>

namespace {

using namespace tests;

std::uint32_t NumberIn(const std::string& bytes, std::size_t at, std::size_t length) {
    std::uint32_t number = 0;
    for (std::size_t i = length; i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    }
    return number;
}

// One picture of an icon: what its entry says, and its bytes.
struct InIcon {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t bits;
    std::string bytes;

    bool IsPng() const { return bytes.starts_with("\x89PNG"); }

    // From the top left; of a bitmap.
    Color PixelAt(std::uint32_t x, std::uint32_t y) const {
        return NumberIn(bytes, 40 + 4 * (std::size_t{height - 1 - y} * width + x), 4);
    }
    bool IsMaskedAt(std::uint32_t x, std::uint32_t y) const {
        const std::size_t mask = 40 + std::size_t{4} * width * height;
        const std::size_t rowBytes = (width + 31) / 32 * 4;
        return (static_cast<unsigned char>(bytes.at(mask + (height - 1 - y) * rowBytes + x / 8)) >> (7 - x % 8) & 1) !=
               0;
    }
};

std::vector<InIcon> TakenApart(const std::string& file) {
    EXPECT_EQ(file.substr(0, 4), std::string("\0\0\1\0", 4));
    std::vector<InIcon> pictures;
    std::size_t expected = 6 + 16 * NumberIn(file, 4, 2);
    for (std::uint32_t i = 0; i < NumberIn(file, 4, 2); ++i) {
        const std::size_t entry = 6 + 16 * i;
        EXPECT_EQ(NumberIn(file, entry + 2, 2), 0u) << "no palette";
        EXPECT_EQ(NumberIn(file, entry + 4, 2), 1u) << "planes";
        const std::uint32_t length = NumberIn(file, entry + 8, 4);
        EXPECT_EQ(NumberIn(file, entry + 12, 4), expected) << "one behind the other";
        pictures.push_back({NumberIn(file, entry, 1), NumberIn(file, entry + 1, 1), NumberIn(file, entry + 6, 2),
                            file.substr(expected, length)});
        expected += length;
    }
    EXPECT_EQ(file.size(), expected);
    return pictures;
}

class Icons : public Editing {
  protected:
    int32_t MakeIcon(const std::string& source, const std::string& name, std::vector<int32_t> sizes) {
        return lumbrix_icon(source.c_str(), Path(name).c_str(), sizes.data(), static_cast<int32_t>(sizes.size()),
                            &job_);
    }

    std::vector<InIcon> Read(const std::string& name) const { return TakenApart(ReadBytes(folder_ / name)); }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Icons, HaveTheSizesInTheirOrder) {
    const std::string source = MakeWhite("a.png", 300, 300);
    EXPECT_EQ(MakeIcon(source, "a.ico", {16, 256, 64, 65, 1}), 0) << job_.message;
    EXPECT_EQ(job_.written, 1);
    EXPECT_EQ(job_.width, 256);
    EXPECT_EQ(job_.height, 256);
    const auto pictures = Read("a.ico");
    ASSERT_EQ(pictures.size(), 5u);
    const std::uint32_t sides[] = {16, 0, 64, 65, 1}; // 0 stands for 256
    const bool arePng[] = {false, true, false, true, false};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(pictures[i].width, sides[i]);
        EXPECT_EQ(pictures[i].height, sides[i]);
        EXPECT_EQ(pictures[i].bits, 32u);
        EXPECT_EQ(pictures[i].IsPng(), arePng[i]) << sides[i];
    }
    const auto largest = Open("a.ico"); // by the reader of icons, which takes the largest
    EXPECT_EQ(largest->Info().width, 256u);
}

TEST_F(Icons, BitmapsHaveTheirHeaderAndBothTheirParts) {
    EXPECT_EQ(MakeIcon(MakeWhite("a.png", 40, 40), "a.ico", {20}), 0);
    const InIcon picture = Read("a.ico").at(0);
    EXPECT_EQ(picture.bytes.size(), 40u + 20 * 20 * 4 + 20 * 4);
    EXPECT_EQ(NumberIn(picture.bytes, 0, 4), 40u);
    EXPECT_EQ(NumberIn(picture.bytes, 4, 4), 20u);
    EXPECT_EQ(NumberIn(picture.bytes, 8, 4), 40u) << "colours and mask";
    EXPECT_EQ(NumberIn(picture.bytes, 12, 2), 1u);
    EXPECT_EQ(NumberIn(picture.bytes, 14, 2), 32u);
    EXPECT_EQ(NumberIn(picture.bytes, 16, 4), 0u);
    EXPECT_EQ(NumberIn(picture.bytes, 20, 4), 20u * 20 * 4 + 20 * 4);
    EXPECT_EQ(picture.PixelAt(0, 0), White);
    EXPECT_EQ(picture.PixelAt(19, 19), White);
}

// A straight line would be at 56 there.
TEST_F(Icons, SmallPicturesAreEnlargedBicubically) {
    const std::string source = Make("a.png", *MakePictureOf(2, 2, [](auto x, auto) { return x == 0 ? Black : White; }));
    EXPECT_EQ(MakeIcon(source, "a.ico", {32}), 0);
    EXPECT_NEAR(RedOf(Read("a.ico").at(0).PixelAt(11, 16)), 44, 4);
}

TEST_F(Icons, PictureIsCentredInItsProportions) {
    const std::string wide = Make("wide.png", *MakePictureOf(64, 32, [](auto x, auto) { return x < 32 ? Red : Blue; }));
    EXPECT_EQ(MakeIcon(wide, "wide.ico", {32}), 0);
    const InIcon across = Read("wide.ico").at(0);
    EXPECT_EQ(across.PixelAt(0, 7), 0u);
    EXPECT_EQ(across.PixelAt(0, 8), Red);
    EXPECT_EQ(across.PixelAt(31, 23), Blue);
    EXPECT_EQ(across.PixelAt(31, 24), 0u);
    EXPECT_TRUE(across.IsMaskedAt(0, 7));
    EXPECT_FALSE(across.IsMaskedAt(0, 8));
    EXPECT_FALSE(across.IsMaskedAt(31, 23));
    EXPECT_TRUE(across.IsMaskedAt(31, 24));
    const std::string high = Make("high.png", *MakePictureOf(10, 40, [](auto, auto y) { return y < 20 ? Red : Blue; }));
    EXPECT_EQ(MakeIcon(high, "high.ico", {40}), 0);
    const InIcon upright = Read("high.ico").at(0);
    EXPECT_EQ(upright.PixelAt(14, 0), 0u);
    EXPECT_EQ(upright.PixelAt(15, 0), Red);
    EXPECT_EQ(upright.PixelAt(24, 39), Blue);
    EXPECT_EQ(upright.PixelAt(25, 39), 0u);
}

TEST_F(Icons, SmallPicturesAreEnlargedAndThinOnesKeepAPixel) {
    const std::string dot = Make("dot.png", *MakePictureOf(1, 1, [](auto, auto) { return Green; }));
    EXPECT_EQ(MakeIcon(dot, "dot.ico", {16}), 0);
    EXPECT_EQ(Read("dot.ico").at(0).PixelAt(8, 8), Green);
    EXPECT_EQ(MakeIcon(MakeWhite("thin.png", 1000, 1), "thin.ico", {16}), 0) << job_.message;
    EXPECT_EQ(Read("thin.ico").at(0).PixelAt(8, 7), White);
}

TEST_F(Icons, LargePicturesAreShrunkAsAWhole) {
    const std::string source =
        Make("a.png", *MakePictureOf(2000, 2000, [](auto x, auto) { return x < 1000 ? Red : Blue; }));
    EXPECT_EQ(MakeIcon(source, "a.ico", {16}), 0);
    const InIcon picture = Read("a.ico").at(0);
    EXPECT_EQ(picture.PixelAt(0, 0), Red);
    EXPECT_EQ(picture.PixelAt(15, 15), Blue);
}

TEST_F(Icons, AlphaStaysAndTheMaskHidesWhatIsLessThanHalfOpaque) {
    const std::string source = Make("a.png", *MakePictureOf(4, 1, [](auto x, auto) {
                                        const std::uint8_t alphas[] = {0, 127, 128, 255};
                                        return MakeColor(10, 20, 30, alphas[x]);
                                    }));
    EXPECT_EQ(MakeIcon(source, "a.ico", {4}), 0);
    const InIcon picture = Read("a.ico").at(0);
    EXPECT_EQ(picture.PixelAt(0, 1), 0u);
    EXPECT_EQ(AlphaOf(picture.PixelAt(1, 1)), 127);
    EXPECT_EQ(AlphaOf(picture.PixelAt(2, 1)), 128);
    EXPECT_EQ(picture.PixelAt(3, 1), MakeColor(10, 20, 30, 255));
    EXPECT_TRUE(picture.IsMaskedAt(1, 1));
    EXPECT_FALSE(picture.IsMaskedAt(2, 1));
}

TEST_F(Icons, OfEveryFormatAreMade) {
    for (const Codec* codec : {&BmpCodec(), &JpegCodec(), &GifCodec(), &TiffCodec(), &PngCodec()}) {
        const std::string source = Make("a", *WhitePicture(30, 30), *codec);
        EXPECT_EQ(MakeIcon(source, "a.ico", {16, 128}), 0) << job_.message;
        EXPECT_EQ(Read("a.ico").at(0).PixelAt(8, 8), White);
    }
    EXPECT_EQ(MakeIcon(Path("a.ico"), "b.ico", {16}), 0) << "an icon too";
}

TEST_F(Icons, SizesThatCannotBeAreRefused) {
    const std::string source = MakeWhite("a.png", 10, 8);
    std::vector<int32_t> all;
    for (int32_t side = 1; side <= 256; ++side) {
        all.push_back(side);
    }
    const std::vector<int32_t> tooMany(300, 16);
    for (const auto& sizes : {std::vector<int32_t>{}, {0}, {-1}, {257}, {16, 32, 16}, tooMany}) {
        EXPECT_EQ(lumbrix_icon(source.c_str(), Path("a.ico").c_str(), sizes.empty() ? all.data() : sizes.data(),
                               static_cast<int32_t>(sizes.size()), &job_),
                  LUMBRIX_INVALID_PARAMETER);
        EXPECT_FALSE(Exists("a.ico"));
    }
    EXPECT_EQ(lumbrix_icon(source.c_str(), Path("a.ico").c_str(), all.data(), -1, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_EQ(MakeIcon(source, "a.ico", {1, 256}), 0);
    EXPECT_EQ(MakeIcon(source, "a.ico", all), 0) << job_.message;
    EXPECT_EQ(Read("a.ico").size(), 256u);
}

TEST_F(Icons, FailureLeavesTheDestinationAsItWas) {
    const std::string source = MakeWhite("a.png", 10, 8);
    WriteBytes(folder_ / "b.ico", "old");
    EXPECT_EQ(MakeIcon(Path("none.png"), "b.ico", {16}), LUMBRIX_FILE_NOT_FOUND);
    job_.keep_existing = 1;
    EXPECT_EQ(MakeIcon(source, "b.ico", {16}), LUMBRIX_ALREADY_THERE);
    job_.keep_existing = 0;
    EXPECT_EQ(ReadBytes(folder_ / "b.ico"), "old");
    EXPECT_EQ(MakeIcon(source, "a.png", {16}), LUMBRIX_GENERIC_ERROR);
    EXPECT_NE(std::string(job_.message).find("it is the source itself"), std::string::npos) << job_.message;
    EXPECT_EQ(MakeIcon(source, "none/a.ico", {16}), LUMBRIX_GENERIC_ERROR);
    EXPECT_NE(std::string(job_.message).find("does not exist"), std::string::npos) << job_.message;
    std::filesystem::create_directory(folder_ / "folder.ico");
    EXPECT_EQ(MakeIcon(source, "folder.ico", {16}), LUMBRIX_GENERIC_ERROR);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 3) << "nothing beside";
    EXPECT_EQ(MakeIcon(source, "b.ico", {16}), 0);
    EXPECT_EQ(job_.written, 1);
    EXPECT_EQ(MakeIcon(" ", "b.ico", {16}), LUMBRIX_BAD_NAME);
    EXPECT_EQ(MakeIcon(source, "c.ico", {}), LUMBRIX_INVALID_PARAMETER);
}

TEST_F(Icons, AreMadeFromMemoryToMemory) {
    const std::string source = MakeWhite("a.png", 100, 80);
    const std::string bytes = ReadBytes(source);
    EXPECT_EQ(MakeIcon(source, "a.ico", {16, 100}), 0);
    lumbrix_input input = LUMBRIX_INPUT_INIT;
    lumbrix_output output = LUMBRIX_OUTPUT_INIT;
    input.data = bytes.data();
    input.length = bytes.size();
    job_.input = &input;
    job_.output = &output;
    const int32_t sizes[] = {16, 100};
    EXPECT_EQ(lumbrix_icon(nullptr, nullptr, sizes, 2, &job_), 0) << job_.message;
    EXPECT_EQ(std::string(static_cast<const char*>(output.data), output.length), ReadBytes(folder_ / "a.ico"));
    lumbrix_free(output.data);
}

TEST_F(Icons, DamageIsToldOrRefused) {
    const std::string photo = ReadBytes(LUMBRIX_SAMPLES "/photo.jpg");
    WriteBytes(folder_ / "cut.jpg", photo.substr(0, photo.size() / 2));
    EXPECT_EQ(MakeIcon(Path("cut.jpg"), "a.ico", {32}), 0);
    EXPECT_EQ(job_.damaged, 1);
    job_.strict = 1;
    EXPECT_EQ(MakeIcon(Path("cut.jpg"), "b.ico", {32}), LUMBRIX_OUT_OF_MEMORY);
    EXPECT_FALSE(Exists("b.ico"));
}

} // namespace
