// JPEG files that are cut off, damaged, or made to do harm.
#include "imaginglibrary/codecs/rows.h"
#include "imaginglibrary/core/limits.h"
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

TEST(JpegDamage, CutFileIsUndecodableUnlessAllItsPixelsAreThere) {
    for (const JpegFile& layout : JpegLayouts()) {
        const std::string whole = MakeJpeg(layout);
        const std::vector<Color> colors = ColorsOf(JpegCodec(), whole);
        ASSERT_FALSE(colors.empty());
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string cut = whole.substr(0, size);
            const Status status = ReadAllRows(JpegCodec(), cut);
            if (status == Status::Ok) {
                EXPECT_EQ(ColorsOf(JpegCodec(), cut), colors) << size << " of " << whole.size() << " bytes";
            } else {
                EXPECT_EQ(status, UndecodableContent);
            }
        }
    }
}

TEST(JpegDamage, OnlyTheEndMarkerMayBeMissing) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::OnePerComponent, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.scans = scans});
        EXPECT_EQ(ReadAllRows(JpegCodec(), whole.substr(0, whole.size() - 2)), Status::Ok);
        EXPECT_EQ(ReadAllRows(JpegCodec(), whole.substr(0, whole.size() - 3)), UndecodableContent);
    }
}

TEST(JpegDamage, PictureWithoutItsLastScansIsUndecodable) {
    for (const JpegScans scans : {JpegScans::OnePerComponent, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.scans = scans});
        const std::size_t first = FindMarker(whole, 0xDA);
        const std::size_t second = FindMarker(whole, 0xDA, first + 2);
        ASSERT_NE(second, std::string::npos);
        EXPECT_EQ(ReadAllRows(JpegCodec(), whole.substr(0, second)), UndecodableContent);
    }
}

TEST(JpegDamage, ComponentThatIsNeverSentIsUndecodable) {
    const std::string whole = MakeJpeg({.scans = JpegScans::OnePerComponent});
    const std::size_t second = FindMarker(whole, 0xDA, FindMarker(whole, 0xDA) + 2);
    EXPECT_EQ(ReadAllRows(JpegCodec(), whole.substr(0, second) + "\xFF\xD9"), UndecodableContent);
}

TEST(JpegDamage, OpeningNeedsTheHeaderOnly) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::Progressive}) {
        const std::string whole = MakeJpeg({.scans = scans});
        constexpr std::size_t LongestScanHeader = 16;
        const auto picture = OpenBytes(JpegCodec(), whole.substr(0, FindMarker(whole, 0xDA) + LongestScanHeader));
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ((*picture)->Info().width, 33u);
        EXPECT_EQ(ReadAllRows(**picture), UndecodableContent);
    }
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
                EXPECT_TRUE(status == Status::Ok || status == UndecodableContent || status == Status::InvalidParameter);
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(JpegDamage, LostRestartMarkerIsUndecodable) {
    std::string bytes = MakeJpeg({.restartInterval = 1});
    bytes.erase(FindMarker(bytes, 0xD1), 2);
    EXPECT_EQ(ReadAllRows(JpegCodec(), bytes), UndecodableContent);
}

TEST(JpegDamage, StrayBytesBetweenScansAreHarmless) {
    const std::string whole = MakeJpeg({.scans = JpegScans::Progressive});
    std::string padded = whole;
    padded.insert(FindMarker(padded, 0xC4, FindMarker(padded, 0xDA)), 7, '\0');
    ASSERT_EQ(ReadAllRows(JpegCodec(), padded), Status::Ok);
    EXPECT_EQ(ColorsOf(JpegCodec(), padded), ColorsOf(JpegCodec(), whole));
}

TEST(JpegDamage, StrayBytesBehindThePictureAreHarmless) {
    EXPECT_EQ(ReadAllRows(JpegCodec(), MakeJpeg({}) + "another program's data"), Status::Ok);
}

TEST(JpegDamage, ZeroProgressionFieldsOfABaselineScanAreHarmless) {
    const std::string whole = MakeJpeg({});
    std::string zeroed = whole;
    const std::size_t spectralEnd = FindMarker(zeroed, 0xDA) + 12;
    ASSERT_EQ(zeroed[spectralEnd], 63);
    zeroed[spectralEnd] = 0;
    ASSERT_EQ(ReadAllRows(JpegCodec(), zeroed), Status::Ok);
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
    const auto picture = OpenBytes(JpegCodec(), WithClaimedSize(bytes, 65500, 65500));
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
    const JpegSamples noise = [](unsigned x, unsigned y, int channel) {
        return static_cast<std::uint8_t>(x * x * 31 + y * y * 17 + x * y * 7 + static_cast<unsigned>(channel) * 85);
    };
    const auto picture =
        JpegCodec().open(std::make_shared<FailingInput>(MakeJpeg({.width = 300, .height = 300}, noise)));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ReadAllRows(**picture), Status::Win32Error);
}

} // namespace
