// Files that are made to take all memory or hours: they cost little, and end with a clear status. Each is read by a
// process of its own, whose memory and time are measured.
#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/operations/turn.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/pngfiles.h"
#include "tests/support/repeatedfile.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace std::string_literals;

constexpr long MostKibibytes = 256 * 1024;
constexpr double MostSeconds = 5; // of the processor, for others may be at work

struct Cost {
    Status status;
    long kibibytes;
    double seconds;
};

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// What another process ends with and takes for `work`, which gives a status.
template <class Work> Cost CostOf(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(static_cast<int>(work()));
    }
    int ending = 0;
    rusage usage{};
    wait4(child, &ending, 0, &usage);
    EXPECT_TRUE(WIFEXITED(ending)) << "ended by signal " << WTERMSIG(ending);
    return {static_cast<Status>(WEXITSTATUS(ending)), usage.ru_maxrss,
            SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime)};
}

template <class Work> void ExpectCheap(Status expected, const Work& work) {
    const Cost cost = CostOf(work);
    std::printf("status %d, %ld KiB, %.2f s\n", static_cast<int>(cost.status), cost.kibibytes, cost.seconds);
    EXPECT_EQ(cost.status, expected);
    EXPECT_LE(cost.kibibytes, MostKibibytes);
    EXPECT_LE(cost.seconds, MostSeconds);
}

void ExpectCheapToOpen(const Codec& codec, const RepeatedFile& file, Status expected) {
    ExpectCheap(expected, [&] { return codec.open(file.Open()).GetStatus(); });
}

void ExpectCheapToRead(const Codec& codec, const RepeatedFile& file, Status expected) {
    ExpectCheap(expected, [&] {
        const auto picture = codec.open(file.Open());
        return picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus();
    });
}

// On its side, for which it is held as a whole.
void ExpectCheapToTurn(const Codec& codec, const RepeatedFile& file, Status expected) {
    ExpectCheap(expected, [&] {
        auto picture = codec.open(file.Open());
        if (!picture.Ok()) {
            return picture.GetStatus();
        }
        const auto turned = Turned(std::move(*picture), 1);
        return turned.Ok() ? ReadAllRows(**turned) : turned.GetStatus();
    });
}

constexpr std::size_t HundredMillion = 100'000'000;

TEST(Bomb, MemoryOfAPictureGrowsWithItsFile) {
    constexpr std::uint64_t Quarter = 268435456; // of a gibibyte
    EXPECT_EQ(MaximumPictureBytesOf(0), Quarter);
    EXPECT_EQ(MaximumPictureBytesOf(1048576), Quarter);
    EXPECT_EQ(MaximumPictureBytesOf(1048577), Quarter + 256);
    EXPECT_EQ(MaximumPictureBytesOf(UINT64_MAX), MaximumPictureBytes);
}

// PNG

const std::string PngStart = "\x89PNG\r\n\x1A\n";
const std::string PngEnd = PngChunk("IEND", "");

std::string PngHeader(std::uint32_t width, std::uint32_t height, int depth, int type, bool isInterlaced) {
    std::string header;
    for (const std::uint32_t side : {width, height}) {
        for (const int shift : {24, 16, 8, 0}) {
            header.push_back(static_cast<char>(side >> shift));
        }
    }
    return PngStart + PngChunk("IHDR", header + static_cast<char>(depth) + static_cast<char>(type) + "\0\0"s +
                                           static_cast<char>(isInterlaced));
}

std::string DeflatedZeros(std::size_t count) {
    z_stream stream{};
    deflateInit(&stream, 9);
    const std::string zeros(std::size_t{1} << 20, '\0');
    std::string result(deflateBound(&stream, count), '\0');
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    for (std::size_t left = count; left > 0;) {
        const std::size_t step = std::min(left, zeros.size());
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
        stream.avail_in = static_cast<uInt>(step);
        left -= step;
        deflate(&stream, left == 0 ? Z_FINISH : Z_NO_FLUSH);
    }
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

const std::string SmallPng = PngHeader(4, 4, 8, 0, false);
const std::string SmallPngData = PngChunk("IDAT", DeflatedZeros(20)) + PngEnd;

TEST(PngBomb, PromiseOfAGibibyteTakesOnlyWhatComes) {
    const auto data = PngChunk("IDAT", DeflatedZeros(100000)) + PngEnd;
    ExpectCheapToRead(PngCodec(), {PngHeader(16000, 16000, 8, 6, true) + data}, UndecodableContent);
    ExpectCheapToTurn(PngCodec(), {PngHeader(16000, 16000, 8, 6, false) + data}, UndecodableContent);
    ExpectCheapToRead(PngCodec(), {PngHeader(65535, 65535, 16, 6, false) + data}, UndecodableContent);
}

TEST(PngBomb, InterlacedPictureOfNothingIsRefused) {
    const auto data = PngChunk("IDAT", DeflatedZeros(std::size_t{1} << 30)) + PngEnd;
    ExpectCheapToRead(PngCodec(), {PngHeader(16000, 16000, 8, 6, true) + data}, Status::OutOfMemory);
}

TEST(PngBomb, InterlacedColumnIsRead) {
    const auto data = PngChunk("IDAT", DeflatedZeros(2 * 65535)) + PngEnd;
    ExpectCheapToRead(PngCodec(), {PngHeader(1, 65535, 8, 0, true) + data}, Status::Ok);
}

TEST(PngBomb, ProfileThatInflatesWithoutEndIsPassedOver) {
    const auto profile = PngChunk("iCCP", "name\0\0"s + DeflatedZeros(std::size_t{1} << 30));
    ExpectCheapToRead(PngCodec(), {SmallPng + profile + SmallPngData}, Status::Ok);
}

TEST(PngBomb, ThousandsOfTextsThatInflateArePassedOver) {
    const auto text = PngChunk("zTXt", "Title\0\0"s + DeflatedZeros(MaximumMetadataBytes + 1));
    ExpectCheapToRead(PngCodec(), {SmallPng, text, 4000, SmallPngData}, Status::Ok);
}

TEST(PngBomb, ChunksBeforeTheImageDataHaveALimit) {
    const auto chunk = PngChunk("tEXt", "");
    ExpectCheapToRead(PngCodec(), {SmallPng, chunk, 262144, SmallPngData}, Status::Ok);
    ExpectCheapToRead(PngCodec(), {SmallPng, chunk, 262145, SmallPngData}, UndecodableContent);
}

TEST(PngBomb, MillionsOfChunksAreRefused) {
    ExpectCheapToRead(PngCodec(), {SmallPng, PngChunk("tEXt", ""), 16'000'000, SmallPngData}, UndecodableContent);
}

TEST(PngBomb, MillionsOfEmptyChunksOfImageDataAreRead) {
    ExpectCheapToRead(PngCodec(), {SmallPng, PngChunk("IDAT", ""), 8'000'000, SmallPngData}, Status::Ok);
}

// GIF

std::string LittleEndian(std::uint32_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, number >>= 8) {
        text.push_back(static_cast<char>(number));
    }
    return text;
}

std::string GifScreen(std::uint32_t side) {
    return "GIF89a" + LittleEndian(side, 2) + LittleEndian(side, 2) + "\x80\0\0"s + std::string(6, '\x7F');
}

std::string GifImage(std::uint32_t side) {
    return "," + LittleEndian(0, 4) + LittleEndian(side, 2) + LittleEndian(side, 2) + "\0"s;
}

const std::string OnePixel = "\2\2\x4C\1\0"s; // code size, clear, 1, end

TEST(GifBomb, HundredMillionTinyBlocksArePassedOver) {
    ExpectCheapToOpen(GifCodec(), {GifScreen(1) + GifImage(1) + "\2", "\1\x44"s, HundredMillion, "\0;"s}, Status::Ok);
}

TEST(GifBomb, MillionsOfFramesAreNotAllCounted) {
    ExpectCheapToRead(GifCodec(), {GifScreen(1), GifImage(1) + OnePixel, HundredMillion / 8, ";"}, Status::Ok);
}

TEST(GifBomb, MillionsOfCommentsArePassedOver) {
    ExpectCheapToRead(GifCodec(), {GifScreen(1), "!\xFE\0"s, HundredMillion / 2, GifImage(1) + OnePixel + ";"},
                      Status::Ok);
}

TEST(GifBomb, CommentOfAHundredMillionBlocksIsCutOff) {
    ExpectCheapToRead(GifCodec(), {GifScreen(1) + "!\xFE", "\1a", HundredMillion, "\0"s + GifImage(1) + OnePixel + ";"},
                      Status::Ok);
}

TEST(GifBomb, LargeScreenOfNothingIsRefused) {
    ExpectCheapToRead(GifCodec(), {GifScreen(65535) + GifImage(1) + OnePixel + ";"}, Status::InvalidParameter);
    ExpectCheapToRead(GifCodec(), {GifScreen(65535) + GifImage(65535) + OnePixel + ";"}, UndecodableContent);
}

// JPEG

std::string ProgressiveJpeg(unsigned side, unsigned scans) {
    const std::string small = MakeJpeg(
        {.width = 8, .height = 8, .given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE, .scans = JpegScans::Progressive});
    const std::size_t first = FindMarker(small, 0xDA);
    const std::size_t second = FindMarker(small, 0xDA, first + 2);
    std::string file = small.substr(0, first);
    for (unsigned i = 0; i < scans; ++i) {
        file += small.substr(first, second - first);
    }
    return WithClaimedSize(file + "\xFF\xD9", side, side);
}

// A scan of this size goes through a million blocks.
TEST(JpegBomb, ScansGoThroughALimitedNumberOfBlocks) {
    ExpectCheapToRead(JpegCodec(), {ProgressiveJpeg(8000, 134)}, Status::Ok);
    ExpectCheapToRead(JpegCodec(), {ProgressiveJpeg(8000, 135)}, UndecodableContent);
    ExpectCheapToRead(JpegCodec(), {ProgressiveJpeg(8000, 450)}, UndecodableContent);
}

TEST(JpegBomb, ProgressivePictureThatPromisesMuchIsRefused) {
    ExpectCheapToRead(JpegCodec(), {ProgressiveJpeg(16000, 12), std::string(1000, '\0'), 200, ""}, Status::OutOfMemory);
    ExpectCheapToRead(JpegCodec(), {ProgressiveJpeg(65500, 1), std::string(1000, '\0'), 3000, ""}, Status::OutOfMemory);
}

TEST(JpegBomb, LargePictureOfNothingIsRefused) {
    const auto file = WithClaimedSize(MakeJpeg({.width = 8, .height = 8}), 65500, 65500);
    ExpectCheapToRead(JpegCodec(), {file}, Status::InvalidParameter);
}

// What may be shown grey where a file breaks off ends where the next is refused.
TEST(JpegBomb, PixelsForEachByteHaveALimit) {
    const auto file = WithClaimedSize(MakeJpeg({.width = 8, .height = 8}), 16384, 4608); // 2048 times 36864
    ASSERT_LT(file.size(), 36863u);
    const RepeatedFile enough{file, "\0"s, 36864 - file.size(), ""};
    const RepeatedFile tooShort{file, "\0"s, 36863 - file.size(), ""};
    EXPECT_EQ(JpegCodec().open(enough.Open()).GetStatus(), Status::Ok);
    EXPECT_EQ(JpegCodec().open(tooShort.Open()).GetStatus(), Status::InvalidParameter);
    const auto smaller = WithClaimedSize(MakeJpeg({.width = 8, .height = 8}), 16384, 4096); // 2 to the power of 26
    EXPECT_EQ(JpegCodec().open(RepeatedFile{smaller}.Open()).GetStatus(), Status::Ok);
}

// BMP

std::string RleBmp(std::uint32_t side) {
    constexpr std::uint32_t PixelsAt = 54 + 1024;
    return "BM" + LittleEndian(0, 8) + LittleEndian(PixelsAt, 4) + LittleEndian(40, 4) + LittleEndian(side, 4) +
           LittleEndian(side, 4) + LittleEndian(1, 2) + LittleEndian(8, 2) + LittleEndian(1, 4) + LittleEndian(0, 20) +
           std::string(1024, '\x55');
}

TEST(BmpBomb, MillionsOfMovesThatMoveNothingArePassedOver) {
    ExpectCheapToRead(BmpCodec(), {RleBmp(1000), "\0\2\0\0"s, HundredMillion / 4, "\0\1"s}, Status::Ok);
}

TEST(BmpBomb, LargestPictureOfNothingIsReadRowByRow) {
    ExpectCheapToRead(BmpCodec(), {RleBmp(65535) + "\1\1\0\1"s}, Status::Ok);
}

TEST(BmpBomb, LargestPictureOfNothingIsNotHeld) {
    ExpectCheapToTurn(BmpCodec(), {RleBmp(65535) + "\1\1\0\1"s}, Status::OutOfMemory);
}

// ICO

std::string IconOf(std::uint32_t side) {
    return "\0\0\1\0\1\0\0\0\0\0\1\0\1\0"s + LittleEndian(0, 4) + LittleEndian(22, 4) + LittleEndian(40, 4) +
           LittleEndian(side, 4) + LittleEndian(2 * side, 4) + LittleEndian(1, 2) + LittleEndian(1, 2) +
           LittleEndian(0, 24) + LittleEndian(0, 4) + LittleEndian(0xFFFFFF, 4);
}

// Of the gibibyte not even the addresses are taken.
TEST(IcoBomb, PictureThatPromisesMuchIsRefused) {
    const RepeatedFile file{IconOf(16384)};
    ExpectCheap(Status::OutOfMemory, [&] {
        constexpr rlimit Gibibyte{std::size_t{1} << 30, std::size_t{1} << 30};
        setrlimit(RLIMIT_AS, &Gibibyte);
        const auto picture = IcoCodec().open(file.Open());
        return picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus();
    });
}

// TIFF

struct TiffField {
    unsigned tag, type;
    std::uint32_t count, value;
};

std::string Directory(const std::vector<TiffField>& fields, std::uint32_t next) {
    std::string directory = LittleEndian(static_cast<std::uint32_t>(fields.size()), 2);
    for (const TiffField& field : fields) {
        directory += LittleEndian(field.tag, 2) + LittleEndian(field.type, 2) + LittleEndian(field.count, 4) +
                     LittleEndian(field.value, 4);
    }
    return directory + LittleEndian(next, 4);
}

const std::string TiffStart = "II*\0\x08\0\0\0"s;

TEST(TiffBomb, ChainOfDirectoriesThatNeverEndsIsNotFollowed) {
    const std::string strip(64, '\x55');
    const std::string loop = TiffStart + Directory({{256, 4, 1, 4},
                                                    {257, 4, 1, 4},
                                                    {258, 3, 1, 8},
                                                    {259, 3, 1, 1},
                                                    {262, 3, 1, 1},
                                                    {273, 4, 1, 8},
                                                    {278, 4, 1, 4},
                                                    {279, 4, 1, 16}},
                                                   8);
    ExpectCheapToRead(TiffCodec(), {loop + strip}, Status::Ok);
}

TEST(TiffBomb, DirectoryOfEmptyPromisesIsUndecodable) {
    std::vector<TiffField> fields;
    for (unsigned tag = 256; tag < 60000; ++tag) {
        fields.push_back({tag, 4, 0x3FFFFFFF, 8});
    }
    ExpectCheapToRead(TiffCodec(), {TiffStart + Directory(fields, 8)}, UndecodableContent);
}

TEST(TiffBomb, BillionsOfStripsAreUndecodable) {
    const std::vector<TiffField> fields{
        {256, 4, 1, 65535},      {257, 4, 1, 65535}, {258, 3, 1, 8}, {259, 3, 1, 1},          {262, 3, 1, 1},
        {273, 4, 0xFFFFFFFF, 8}, {277, 3, 1, 65535}, {278, 4, 1, 1}, {279, 4, 0xFFFFFFFF, 8}, {284, 3, 1, 2}};
    ExpectCheapToRead(TiffCodec(), {TiffStart + Directory(fields, 0)}, UndecodableContent);
}

TEST(TiffBomb, StripThatPromisesFourGibibytesIsUndecodable) {
    for (const std::uint32_t compression : {1u, 4u, 5u, 7u, 8u, 32773u}) {
        const std::vector<TiffField> fields{{256, 4, 1, 65535},       {257, 4, 1, 65535},     {258, 3, 1, 8},
                                            {259, 3, 1, compression}, {262, 3, 1, 1},         {273, 4, 1, 8},
                                            {278, 4, 1, 65535},       {279, 4, 1, 0xFFFFFFF0}};
        ExpectCheapToRead(TiffCodec(), {TiffStart + Directory(fields, 0)}, UndecodableContent);
    }
}

} // namespace
