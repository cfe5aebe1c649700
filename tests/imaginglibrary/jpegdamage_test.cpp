// JPEG files that are cut off, damaged, or made to do harm.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

// One file for each way of laying out the data.
std::vector<JpegFile> JpegLayouts() {
    const JpegFile base{.horizontalSampling = 2, .verticalSampling = 2, .quality = 60};
    std::vector<JpegFile> layouts;
    for (const JpegScans scans : {JpegScans::One, JpegScans::OnePerComponent, JpegScans::Progressive}) {
        JpegFile file = base;
        file.scans = scans;
        layouts.push_back(file);
        file.restartInterval = 1;
        layouts.push_back(file);
#if defined(C_ARITH_CODING_SUPPORTED) && defined(D_ARITH_CODING_SUPPORTED)
        file.isArithmetic = true;
        layouts.push_back(file);
#endif
    }
    layouts.push_back({.given = JCS_CMYK, .stored = JCS_YCCK, .hasAdobeMarker = true});
    layouts.push_back({.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE});
    return layouts;
}

// Behind the first scan's header, where the image data begin.
std::size_t EndOfHeader(const std::string& jpeg) {
    const std::size_t scan = FindMarker(jpeg, 0xDA);
    return scan + 2 + static_cast<std::uint8_t>(jpeg[scan + 3]);
}

constexpr Color MidGrey = 0xFF808080;

struct Decoded {
    std::vector<Color> colors;
    bool isDamaged = false;
};

Decoded DecodedJpeg(const std::string& bytes) {
    const auto picture = Opened(JpegCodec(), bytes);
    if (!picture) {
        return {};
    }
    Decoded decoded{ColorsOf(*picture)};
    decoded.isDamaged = picture->Damage()->IsMet();
    return decoded;
}

Status RefusingStatus(const std::string& bytes) {
    const auto picture = OpenBytes(JpegCodec(), bytes);
    if (!picture.Ok()) {
        return picture.GetStatus();
    }
    (*picture)->Damage()->Refuse();
    return ReadAllRows(**picture);
}

// A picture of several rows of blocks, with enough in it that half the file is about half the picture.
JpegFile TallFile() { return {.width = 48, .height = 128}; }

std::uint8_t NoisySample(unsigned x, unsigned y, int channel) {
    return static_cast<std::uint8_t>(x * x * 31 + y * y * 17 + x * y * 7 + static_cast<unsigned>(channel) * 85);
}

std::vector<Color> RowsOf(const std::vector<Color>& colors, std::size_t width, std::size_t first, std::size_t count) {
    const auto start = colors.begin() + static_cast<std::ptrdiff_t>(first * width);
    return {start, start + static_cast<std::ptrdiff_t>(count * width)};
}

TEST(JpegDamage, FileCutBehindItsHeaderIsShownAndMarkedWherePixelsAreLost) {
    for (const JpegFile& layout : JpegLayouts()) {
        const std::string whole = MakeJpeg(layout);
        const std::vector<Color> colors = ColorsOf(JpegCodec(), whole);
        ASSERT_FALSE(colors.empty());
        for (std::size_t size = EndOfHeader(whole); size < whole.size(); ++size) {
            const std::string cut = whole.substr(0, size);
            const Decoded decoded = DecodedJpeg(cut);
            ASSERT_EQ(decoded.colors.size(), colors.size());
            EXPECT_TRUE(decoded.isDamaged || decoded.colors == colors) << size << " of " << whole.size() << " bytes";
            EXPECT_EQ(RefusingStatus(cut), decoded.isDamaged ? UndecodableContent : Status::Ok) << size;
        }
        EXPECT_TRUE(DecodedJpeg(whole.substr(0, EndOfHeader(whole))).isDamaged);
    }
}

TEST(JpegDamage, FileCutWithinItsHeaderIsUndecodable) {
    for (const JpegFile& layout : JpegLayouts()) {
        const std::string whole = MakeJpeg(layout);
        for (std::size_t size = 0; size < EndOfHeader(whole); ++size) {
            EXPECT_EQ(OpenBytes(JpegCodec(), whole.substr(0, size)).GetStatus(), UndecodableContent) << size;
        }
    }
}

TEST(JpegDamage, WholeFileIsNeverMarked) {
    for (const JpegFile& layout : JpegLayouts()) {
        EXPECT_FALSE(DecodedJpeg(MakeJpeg(layout)).isDamaged);
        EXPECT_EQ(RefusingStatus(MakeJpeg(layout)), Status::Ok);
    }
}

TEST(JpegDamage, RowsBeforeTheCutAreKeptAndThoseBehindItAreGrey) {
    std::vector<JpegFile> files{TallFile(), TallFile(), TallFile()};
    files[1].given = files[1].stored = JCS_GRAYSCALE;
    files[2].given = JCS_CMYK;
    files[2].stored = JCS_YCCK;
    files[2].hasAdobeMarker = true;
    files.push_back(TallFile());
    files[3].given = files[3].stored = JCS_CMYK;
#if defined(C_ARITH_CODING_SUPPORTED) && defined(D_ARITH_CODING_SUPPORTED)
    files.push_back(TallFile());
    files[4].isArithmetic = true;
#endif
    for (const JpegFile& file : files) {
        const std::string whole = MakeJpeg(file, NoisySample);
        const std::size_t data = EndOfHeader(whole);
        const Decoded cut = DecodedJpeg(whole.substr(0, data + (whole.size() - data) / 2));
        EXPECT_TRUE(cut.isDamaged);
        EXPECT_EQ(RowsOf(cut.colors, file.width, 0, 48), RowsOf(ColorsOf(JpegCodec(), whole), file.width, 0, 48));
        EXPECT_EQ(RowsOf(cut.colors, file.width, 80, 48), std::vector<Color>(48 * 48, MidGrey));
    }
}

TEST(JpegDamage, MiddleInksOfAWholeFileAreNotTakenForGaps) {
    const auto middle = [](unsigned, unsigned, int) { return std::uint8_t{128}; };
    const JpegFile file{.given = JCS_CMYK, .stored = JCS_CMYK, .hasAdobeMarker = true};
    const Decoded decoded = DecodedJpeg(MakeJpeg(file, middle));
    EXPECT_FALSE(decoded.isDamaged);
    EXPECT_EQ(decoded.colors[0], 0xFF404040);
}

TEST(JpegDamage, ArithmeticDataThatEndEarlyShowTheRowOfBlocksInWhichTheyEnd) {
#if defined(C_ARITH_CODING_SUPPORTED) && defined(D_ARITH_CODING_SUPPORTED)
    for (const JpegScans scans : {JpegScans::One, JpegScans::OnePerComponent, JpegScans::Progressive}) {
        JpegFile file = TallFile();
        file.isArithmetic = true;
        file.scans = scans;
        const std::string whole = MakeJpeg(file, NoisySample);
        const Decoded cut = DecodedJpeg(whole.substr(0, EndOfHeader(whole) + 1));
        EXPECT_TRUE(cut.isDamaged);
        EXPECT_EQ(RowsOf(cut.colors, file.width, 8, 120), std::vector<Color>(48 * 120, MidGrey));
        EXPECT_EQ(
            GreatestDifference(DecodedJpeg(whole.substr(0, whole.size() - 2)).colors, ColorsOf(JpegCodec(), whole)), 0);
    }
#endif
}

TEST(JpegDamage, ArithmeticScansBeforeTheOneThatEndsEarlyAreShownWhole) {
#if defined(C_ARITH_CODING_SUPPORTED) && defined(D_ARITH_CODING_SUPPORTED)
    JpegFile file = TallFile();
    file.isArithmetic = true;
    file.scans = JpegScans::Progressive;
    const std::string whole = MakeJpeg(file);
    const std::size_t second = FindMarker(whole, 0xDA, FindMarker(whole, 0xDA) + 2);
    const std::size_t headerBytes = 2 + static_cast<std::uint8_t>(whole[second + 3]);
    const Decoded cut = DecodedJpeg(whole.substr(0, second + headerBytes + 1));
    EXPECT_TRUE(cut.isDamaged);
    EXPECT_GT(PeakSignalToNoise(cut.colors, ColorsOf(JpegCodec(), whole)), 20);
#endif
}

TEST(JpegDamage, OnlyTheEndMarkerMayBeMissing) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::OnePerComponent, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.scans = scans});
        EXPECT_EQ(RefusingStatus(whole.substr(0, whole.size() - 2)), Status::Ok);
        EXPECT_EQ(RefusingStatus(whole.substr(0, whole.size() - 3)), UndecodableContent);
    }
}

TEST(JpegDamage, PictureWithoutItsLastScansIsShownAsFarAsTheOthersGo) {
    const JpegFile file{.width = 64, .height = 64, .scans = JpegScans::Progressive};
    const std::string whole = MakeJpeg(file);
    std::size_t scan = FindMarker(whole, 0xDA);
    double likenessBefore = 0;
    for (std::size_t next = scan; (next = FindMarker(whole, 0xDA, scan + 2)) != std::string::npos; scan = next) {
        const Decoded cut = DecodedJpeg(whole.substr(0, next));
        EXPECT_TRUE(cut.isDamaged);
        EXPECT_EQ(RefusingStatus(whole.substr(0, next)), UndecodableContent);
        const double likeness = PeakSignalToNoise(cut.colors, ColorsOf(JpegCodec(), whole));
        EXPECT_GE(likeness, likenessBefore - 1);
        EXPECT_GT(likeness, 20);
        likenessBefore = likeness;
    }
    EXPECT_GT(likenessBefore, 40);
}

TEST(JpegDamage, ComponentThatIsNeverSentIsGrey) {
    const std::string whole = MakeJpeg({.scans = JpegScans::OnePerComponent});
    const std::size_t second = FindMarker(whole, 0xDA, FindMarker(whole, 0xDA) + 2);
    const Decoded decoded = DecodedJpeg(whole.substr(0, second) + "\xFF\xD9");
    EXPECT_TRUE(decoded.isDamaged);
    for (const Color color : decoded.colors) {
        EXPECT_EQ(RedOf(color), GreenOf(color));
        EXPECT_EQ(BlueOf(color), GreenOf(color));
    }
}

// Scans up to a marker that libjpeg cannot read show as if the file ended there.
TEST(JpegDamage, BrokenMarkerBetweenScansEndsTheFile) {
    for (const JpegScans scans : {JpegScans::OnePerComponent, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.width = 64, .height = 64, .scans = scans});
        const std::size_t third = FindMarker(whole, 0xDA, FindMarker(whole, 0xDA, FindMarker(whole, 0xDA) + 2) + 2);
        std::string broken = whole;
        broken[third + 4] = 9; // components of the scan
        const Decoded decoded = DecodedJpeg(broken);
        EXPECT_TRUE(decoded.isDamaged);
        EXPECT_EQ(decoded.colors, ColorsOf(JpegCodec(), whole.substr(0, third)));
        EXPECT_EQ(RefusingStatus(broken), UndecodableContent);
    }
}

// The marker code itself may have been read with the data before it.
TEST(JpegDamage, BrokenTableBetweenScansEndsTheFile) {
    const std::string whole = MakeJpeg({.width = 64, .height = 64, .scans = JpegScans::Progressive});
    const std::size_t table = FindMarker(whole, 0xC4, FindMarker(whole, 0xDA) + 2);
    ASSERT_NE(table, std::string::npos);
    std::string broken = whole;
    broken[table + 3] = 1; // length
    const Decoded decoded = DecodedJpeg(broken);
    EXPECT_TRUE(decoded.isDamaged);
    EXPECT_EQ(decoded.colors, ColorsOf(JpegCodec(), whole.substr(0, table)));
}

// Breaks at an ever earlier marker, each time it is opened.
class WorseningInput : public InputFile {
  public:
    WorseningInput(std::string bytes, std::vector<std::size_t> breaks)
        : bytes_(std::move(bytes)), breaks_(std::move(breaks)) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset == 0 && opened_++ > 0 && !breaks_.empty()) {
            bytes_[breaks_.front()] = 9;
            breaks_.erase(breaks_.begin());
        }
        return MemoryInput(bytes_).ReadAt(offset, buffer, count);
    }

  private:
    mutable std::string bytes_;
    mutable std::vector<std::size_t> breaks_;
    mutable int opened_ = 0;
};

TEST(JpegDamage, PictureThatCannotBeReadUpToItsBreakIsGreyThroughout) {
    const std::string whole = MakeJpeg({.scans = JpegScans::OnePerComponent});
    const std::size_t second = FindMarker(whole, 0xDA, FindMarker(whole, 0xDA) + 2);
    const std::size_t third = FindMarker(whole, 0xDA, second + 2);
    const auto picture =
        JpegCodec().open(std::make_shared<WorseningInput>(whole, std::vector<std::size_t>{third + 4, second + 4}));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), std::vector<Color>(33 * 17, MidGrey));
    EXPECT_TRUE((*picture)->Damage()->IsMet());
}

TEST(JpegDamage, OpeningNeedsTheHeaderOnly) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.scans = scans});
        const auto picture = Opened(JpegCodec(), whole.substr(0, EndOfHeader(whole)));
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->Info().width, 33u);
        EXPECT_FALSE(picture->Damage()->IsMet()) << "nothing was decoded yet";
        EXPECT_EQ(ColorsOf(*picture), std::vector<Color>(33 * 17, MidGrey));
        EXPECT_TRUE(picture->Damage()->IsMet());
    }
}

TEST(JpegDamage, ReducedPictureSharesTheMark) {
    const std::string whole = MakeJpeg(TallFile(), NoisySample);
    const auto picture = Opened(JpegCodec(), whole.substr(0, whole.size() / 2));
    ASSERT_TRUE(picture);
    const auto reduced = picture->ReducedTo(6, 16);
    ASSERT_TRUE(reduced);
    EXPECT_EQ(ReadAllRows(*reduced->picture), Status::Ok);
    EXPECT_TRUE(picture->Damage()->IsMet());
    picture->Damage()->Refuse();
    EXPECT_EQ(ReadAllRows(*reduced->picture), UndecodableContent);
}

TEST(JpegDamage, AnyDamagedByteGivesAStatusAndSaysNothing) {
    testing::internal::CaptureStderr();
    for (const JpegFile& layout : JpegLayouts()) {
        const std::string whole = MakeJpeg(layout);
        for (std::size_t i = 0; i < whole.size(); ++i) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                std::string damaged = whole;
                damaged[i] = static_cast<char>(damaged[i] ^ flip);
                const Status status = ReadAllRows(JpegCodec(), damaged);
                if (i >= EndOfHeader(whole)) {
                    EXPECT_EQ(status, Status::Ok) << i;
                } else {
                    EXPECT_TRUE(status == Status::Ok || status == UndecodableContent ||
                                status == Status::InvalidParameter);
                }
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(JpegDamage, BehindALostRestartMarkerThePictureGoesOn) {
    const JpegFile file{.width = 64, .height = 64, .restartInterval = 4};
    const std::string whole = MakeJpeg(file, NoisySample);
    std::string bytes = whole;
    bytes.erase(FindMarker(bytes, 0xD1), 2);
    const Decoded decoded = DecodedJpeg(bytes);
    const std::vector<Color> colors = ColorsOf(JpegCodec(), whole);
    EXPECT_TRUE(decoded.isDamaged);
    EXPECT_NE(decoded.colors, colors);
    EXPECT_EQ(RowsOf(decoded.colors, 64, 32, 32), RowsOf(colors, 64, 32, 32));
    EXPECT_EQ(RefusingStatus(bytes), UndecodableContent);
}

TEST(JpegDamage, StrayBytesBetweenScansAreHarmless) {
    const std::string whole = MakeJpeg({.scans = JpegScans::Progressive});
    std::string padded = whole;
    padded.insert(FindMarker(padded, 0xC4, FindMarker(padded, 0xDA)), 7, '\0');
    ASSERT_EQ(RefusingStatus(padded), Status::Ok);
    EXPECT_EQ(ColorsOf(JpegCodec(), padded), ColorsOf(JpegCodec(), whole));
}

TEST(JpegDamage, StrayBytesBehindThePictureAreHarmless) {
    EXPECT_EQ(RefusingStatus(MakeJpeg({}) + "another program's data"), Status::Ok);
}

TEST(JpegDamage, ZeroProgressionFieldsOfABaselineScanAreHarmless) {
    const std::string whole = MakeJpeg({});
    std::string zeroed = whole;
    const std::size_t spectralEnd = FindMarker(zeroed, 0xDA) + 12;
    ASSERT_EQ(zeroed[spectralEnd], 63);
    zeroed[spectralEnd] = 0;
    ASSERT_EQ(RefusingStatus(zeroed), Status::Ok);
    EXPECT_EQ(ColorsOf(JpegCodec(), zeroed), ColorsOf(JpegCodec(), whole));
}

TEST(JpegDamage, SideBeyondTheLimitIsInvalid) {
    const std::string bytes = MakeJpeg({});
    EXPECT_EQ(OpenBytes(JpegCodec(), WithClaimedSize(bytes, 65501, 8)).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(OpenBytes(JpegCodec(), WithClaimedSize(bytes, 8, 65535)).GetStatus(), Status::InvalidParameter);
}

TEST(JpegDamage, EmptyPictureIsUndecodable) {
    const std::string bytes = MakeJpeg({});
    EXPECT_EQ(OpenBytes(JpegCodec(), WithClaimedSize(bytes, 0, 8)).GetStatus(), UndecodableContent);
    EXPECT_EQ(OpenBytes(JpegCodec(), WithClaimedSize(bytes, 8, 0)).GetStatus(), UndecodableContent);
}

TEST(JpegDamage, TwelveBitsPerSampleAreUndecodable) {
    std::string bytes = MakeJpeg({});
    bytes[FindMarker(bytes, 0xC0) + 4] = 12;
    EXPECT_EQ(OpenBytes(JpegCodec(), bytes).GetStatus(), UndecodableContent);
}

TEST(JpegDamage, LosslessProcessIsUndecodable) {
    std::string bytes = MakeJpeg({});
    bytes[FindMarker(bytes, 0xC0) + 1] = '\xC3';
    EXPECT_EQ(ReadAllRows(JpegCodec(), bytes), UndecodableContent);
}

TEST(JpegDamage, TwoComponentsAreNoPicture) {
    std::string bytes = MakeJpeg({});
    const std::size_t frame = FindMarker(bytes, 0xC0);
    bytes[frame + 3] = 8 + 3 * 2;
    bytes[frame + 9] = 2;
    bytes.erase(frame + 2 + 8 + 3 * 2, 3);
    const std::size_t scan = FindMarker(bytes, 0xDA);
    bytes[scan + 3] = 6 + 2 * 2;
    bytes[scan + 4] = 2;
    bytes.erase(scan + 5 + 2 * 2, 2);
    EXPECT_EQ(OpenBytes(JpegCodec(), bytes).GetStatus(), UndecodableContent);
}

TEST(JpegDamage, CoefficientsBeyondTheMemoryLimitAreRefusedBeforeTheyAreTaken) {
    const std::string bytes = MakeJpeg({.scans = JpegScans::Progressive});
    const auto picture = OpenBytes(JpegCodec(), WithClaimedSize(bytes, 8192, 8192));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->OpenRows().GetStatus(), Status::OutOfMemory);
}

TEST(JpegDamage, EndlessScansAreRefused) {
    const std::string whole = MakeJpeg({.scans = JpegScans::OnePerComponent});
    const std::size_t first = FindMarker(whole, 0xDA);
    const std::string scan = whole.substr(first, FindMarker(whole, 0xDA, first + 2) - first);
    const auto withScans = [&](int count) {
        std::string bytes = whole.substr(0, first);
        for (int i = 3; i < count; ++i) {
            bytes += scan;
        }
        return bytes + whole.substr(first);
    };
    EXPECT_EQ(ReadAllRows(JpegCodec(), withScans(MaximumJpegScans)), Status::Ok);
    EXPECT_EQ(ReadAllRows(JpegCodec(), withScans(MaximumJpegScans + 1)), UndecodableContent);
}

// The disk fails behind the header.
class FailingInput : public MemoryInput {
  public:
    using MemoryInput::MemoryInput;

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset != 0) {
            return Status::Win32Error;
        }
        return MemoryInput::ReadAt(offset, buffer, count);
    }
};

TEST(JpegDamage, FailedReadIsTheReadersStatus) {
    const auto picture =
        JpegCodec().open(std::make_shared<FailingInput>(MakeJpeg({.width = 300, .height = 300}, NoisySample)));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ReadAllRows(**picture), Status::Win32Error);
}

} // namespace
