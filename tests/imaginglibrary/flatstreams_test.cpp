// Pictures from streams and to streams, which the tests make and have fail.
#include "imaginglibrary/files/inputstream.h"
#include "imaginglibrary/files/outputstream.h"
#include "tests/support/codecs.h"
#include "tests/support/flatfunctions.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <thread>

namespace {

using namespace imaginglibrary;
using namespace tests;

// A stream over a string that keeps count of what is done to it.
class StringStream : public Stream {
  public:
    explicit StringStream(std::string content = {}, std::uint64_t position = 0)
        : Stream{&Table}, bytes(std::move(content)), at(position) {}

    std::string bytes;
    std::uint64_t at;
    int references = 1;
    std::size_t failAt = std::numeric_limits<std::size_t>::max(); // neither read nor written from here on
    std::uint32_t largestRead = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t largestAsked = 0;
    bool canSeek = true;
    bool claimsTooMuch = false;
    StreamResult failure = static_cast<StreamResult>(0x80004005);

  private:
    static StringStream& Of(Stream* stream) { return *static_cast<StringStream*>(stream); }

    static StreamResult STREAM_CALL Ask(Stream*, const Guid*, void**) { return static_cast<StreamResult>(0x80004002); }
    static std::uint32_t STREAM_CALL Add(Stream* stream) { return static_cast<std::uint32_t>(++Of(stream).references); }
    static std::uint32_t STREAM_CALL Release(Stream* stream) {
        return static_cast<std::uint32_t>(--Of(stream).references);
    }
    static StreamResult STREAM_CALL Read(Stream* stream, void* buffer, std::uint32_t count, std::uint32_t* read) {
        StringStream& self = Of(stream);
        self.largestAsked = std::max(self.largestAsked, count);
        if (self.at + count > self.failAt) {
            return self.failure;
        }
        const std::string step =
            self.at < self.bytes.size() ? self.bytes.substr(self.at, std::min(count, self.largestRead)) : std::string();
        std::memcpy(buffer, step.data(), step.size());
        self.at += step.size();
        *read = self.claimsTooMuch ? count + 1 : static_cast<std::uint32_t>(step.size());
        return step.size() < count ? 1 : 0;
    }
    static StreamResult STREAM_CALL Write(Stream* stream, const void* from, std::uint32_t count,
                                          std::uint32_t* written) {
        StringStream& self = Of(stream);
        if (self.at + count > self.failAt) {
            return self.failure;
        }
        if (self.bytes.size() < self.at + count) {
            self.bytes.resize(self.at + count, '?'); // no zeros in gaps
        }
        std::memcpy(&self.bytes[self.at], from, count);
        self.at += count;
        *written = count;
        return 0;
    }
    static StreamResult STREAM_CALL Seek(Stream* stream, std::int64_t move, SeekOrigin origin, std::uint64_t* place) {
        StringStream& self = Of(stream);
        if (!self.canSeek) {
            return static_cast<StreamResult>(0x80004001);
        }
        const std::uint64_t from = origin == SeekOrigin::Start     ? 0
                                   : origin == SeekOrigin::Current ? self.at
                                                                   : self.bytes.size();
        self.at = from + static_cast<std::uint64_t>(move);
        if (place != nullptr) {
            *place = self.at;
        }
        return 0;
    }
    static StreamResult STREAM_CALL No64(Stream*, std::uint64_t) { return -1; }
    static StreamResult STREAM_CALL NoCopy(Stream*, Stream*, std::uint64_t, std::uint64_t*, std::uint64_t*) {
        return -1;
    }
    static StreamResult STREAM_CALL NoCommit(Stream*, std::uint32_t) { return -1; }
    static StreamResult STREAM_CALL NoRevert(Stream*) { return -1; }
    static StreamResult STREAM_CALL NoLock(Stream*, std::uint64_t, std::uint64_t, std::uint32_t) { return -1; }
    static StreamResult STREAM_CALL NoFacts(Stream*, void*, std::uint32_t) { return -1; }
    static StreamResult STREAM_CALL NoClone(Stream*, Stream**) { return -1; }

    static constexpr StreamFunctions Table{Ask,    Add,      Release,  Read,   Write,  Seek,    No64,
                                           NoCopy, NoCommit, NoRevert, NoLock, NoLock, NoFacts, NoClone};
};

class FlatStreams : public testing::Test {
  protected:
    void SetUp() override {
        const GdiplusStartupInput input{1, nullptr, 0, 0};
        ASSERT_EQ(flat::GdiplusStartup(&token_, &input, nullptr), Status::Ok);
    }
    void TearDown() override { flat::GdiplusShutdown(token_); }

    std::string FileOf(const Codec& codec, std::uint32_t width = 61, std::uint32_t height = 43) const {
        const auto picture = MakePicture(PixelFormat::Rgb24, width, height);
        EXPECT_EQ(WritePicture(codec, *picture, folder_ / "file"), Status::Ok);
        return ReadBytes(folder_ / "file");
    }

    static Status Load(Stream* stream, GpImage** image) { return CallFlat("GdipLoadImageFromStream", stream, image); }

    static GpImage* Load(Stream& stream) {
        GpImage* image = nullptr;
        EXPECT_EQ(Load(&stream, &image), Status::Ok);
        return image;
    }

    static Status Save(GpImage* image, Stream* stream, const Codec& codec) {
        const EncoderParameters* const none = nullptr;
        return CallFlat("GdipSaveImageToStream", image, stream, &codec.classId, none);
    }

    std::string SavedAsFile(GpImage* image, const Codec& codec) const {
        EXPECT_EQ(flat::GdipSaveImageToFile(image, (folder_ / "saved").u16string().c_str(), &codec.classId),
                  Status::Ok);
        return ReadBytes(folder_ / "saved");
    }

    TemporaryFolder folder_;
    std::uintptr_t token_ = 0;
};

TEST_F(FlatStreams, EachFormatIsReadAndWrittenAsWithFiles) {
    for (const Codec* from : {&BmpCodec(), &JpegCodec(), &GifCodec(), &TiffCodec(), &PngCodec()}) {
        const std::string file = FileOf(*from);
        WriteBytes(folder_ / "source", file);
        GpImage* ofFile = nullptr;
        ASSERT_EQ(flat::GdipLoadImageFromFile((folder_ / "source").u16string().c_str(), &ofFile), Status::Ok);
        StringStream source(file);
        GpImage* image = Load(source);
        for (const Codec* to : {&BmpCodec(), &JpegCodec(), &GifCodec(), &TiffCodec(), &PngCodec()}) {
            StringStream target;
            EXPECT_EQ(Save(image, &target, *to), Status::Ok);
            EXPECT_EQ(target.bytes, SavedAsFile(ofFile, *to));
            EXPECT_EQ(target.references, 1);
            EXPECT_EQ(target.at, target.bytes.size()) << "behind the picture";
        }
        EXPECT_EQ(flat::GdipDisposeImage(image), Status::Ok);
        EXPECT_EQ(flat::GdipDisposeImage(ofFile), Status::Ok);
    }
}

TEST_F(FlatStreams, AllNamesForLoadingLoad) {
    for (const char* name : {"GdipLoadImageFromStream", "GdipLoadImageFromStreamICM", "GdipCreateBitmapFromStream"}) {
        StringStream source(FileOf(PngCodec()));
        GpImage* image = nullptr;
        EXPECT_EQ(CallFlat(name, static_cast<Stream*>(&source), &image), Status::Ok) << name;
        std::uint32_t width = 0;
        EXPECT_EQ(flat::GdipGetImageWidth(image, &width), Status::Ok) << name;
        EXPECT_EQ(width, 61u);
        EXPECT_EQ(flat::GdipDisposeImage(image), Status::Ok);
    }
}

TEST_F(FlatStreams, StreamIsKeptAsLongAsAnImageNeedsIt) {
    StringStream source(FileOf(PngCodec()));
    GpImage* image = Load(source);
    EXPECT_GT(source.references, 1);
    GpImage* clone = nullptr;
    ASSERT_EQ(flat::GdipCloneImage(image, &clone), Status::Ok);
    EXPECT_EQ(flat::GdipDisposeImage(image), Status::Ok);
    EXPECT_GT(source.references, 1);
    StringStream target;
    EXPECT_EQ(Save(clone, &target, BmpCodec()), Status::Ok);
    EXPECT_EQ(flat::GdipDisposeImage(clone), Status::Ok);
    EXPECT_EQ(source.references, 1);
}

TEST_F(FlatStreams, NoReferenceStaysOfWhatIsNoPicture) {
    StringStream source("Dear Sir or Madam");
    GpImage* image = reinterpret_cast<GpImage*>(this);
    EXPECT_EQ(Load(&source, &image), Status::OutOfMemory);
    EXPECT_EQ(image, nullptr);
    StringStream empty;
    EXPECT_EQ(Load(&empty, &image), Status::OutOfMemory);
    EXPECT_EQ(source.references, 1);
    EXPECT_EQ(empty.references, 1);
}

TEST_F(FlatStreams, ReadingIsPiecewise) {
    StringStream source(FileOf(BmpCodec(), 3000, 1000));
    GpImage* image = Load(source);
    EXPECT_LE(source.largestAsked, 65536u) << "a header";
    StringStream target;
    EXPECT_EQ(Save(image, &target, PngCodec()), Status::Ok);
    EXPECT_LE(source.largestAsked, 1u << 20);
    EXPECT_LT(source.largestAsked, source.bytes.size() / 4);
    flat::GdipDisposeImage(image);
}

TEST_F(FlatStreams, ShortReadsAreGoneOnWith) {
    const std::string file = FileOf(PngCodec());
    StringStream whole(file);
    StringStream pieces(file);
    pieces.largestRead = 7;
    GpImage* first = Load(whole);
    GpImage* second = Load(pieces);
    StringStream expected;
    StringStream target;
    EXPECT_EQ(Save(first, &expected, BmpCodec()), Status::Ok);
    EXPECT_EQ(Save(second, &target, BmpCodec()), Status::Ok);
    EXPECT_EQ(target.bytes, expected.bytes);
    flat::GdipDisposeImage(first);
    flat::GdipDisposeImage(second);
}

TEST_F(FlatStreams, PictureBeginsWhereTheStreamStands) {
    const std::string file = FileOf(TiffCodec()); // which is read and written to and fro
    StringStream source("some bytes before" + file, 17);
    GpImage* image = Load(source);
    StringStream target("already there", 13);
    EXPECT_EQ(Save(image, &target, TiffCodec()), Status::Ok);
    EXPECT_EQ(target.bytes, "already there" + SavedAsFile(image, TiffCodec()));
    flat::GdipDisposeImage(image);
}

TEST_F(FlatStreams, SourceMustSeekAndATargetOnlyWhereItsFormatDoes) {
    StringStream source(FileOf(PngCodec()));
    source.canSeek = false;
    GpImage* image = nullptr;
    EXPECT_EQ(Load(&source, &image), Status::Win32Error);
    source.canSeek = true;
    image = Load(source);
    StringStream target;
    target.canSeek = false;
    EXPECT_EQ(Save(image, &target, JpegCodec()), Status::Ok);
    EXPECT_EQ(target.bytes, SavedAsFile(image, JpegCodec()));
    flat::GdipDisposeImage(image);
}

TEST_F(FlatStreams, FailingReadsEndInAStatusWhereverTheyCome) {
    const std::string file = FileOf(PngCodec(), 20, 20);
    for (std::size_t at = 0; at < file.size(); ++at) {
        StringStream source(file);
        source.failAt = at;
        GpImage* image = nullptr;
        if (Load(&source, &image) == Status::Ok) {
            StringStream target;
            EXPECT_NE(Save(image, &target, BmpCodec()), Status::Ok) << at;
            flat::GdipDisposeImage(image);
        }
        EXPECT_EQ(source.references, 1) << at;
    }
}

// A call that failed may have moved the stream all the same.
TEST(StreamCursors, FindTheirPlaceAgainBehindAFailure) {
    StringStream stream("abcdefgh");
    StreamCursor cursor(&stream);
    std::string read(2, ' ');
    ASSERT_TRUE(cursor.ReadAt(0, read.data(), 2).Ok());
    stream.failAt = 0;
    EXPECT_FALSE(cursor.ReadAt(2, read.data(), 2).Ok());
    stream.failAt = stream.bytes.size();
    stream.at = 5;
    ASSERT_TRUE(cursor.ReadAt(2, read.data(), 2).Ok());
    EXPECT_EQ(read, "cd");
    stream.failAt = 0;
    EXPECT_EQ(cursor.WriteAt(4, "E", 1), Status::Win32Error);
    stream.failAt = stream.bytes.size();
    stream.at = 7;
    EXPECT_EQ(cursor.WriteAt(4, "E", 1), Status::Ok);
    EXPECT_EQ(stream.bytes, "abcdEfgh");
}

TEST_F(FlatStreams, FailingWritesEndInAStatusWhereverTheyCome) {
    StringStream source(FileOf(PngCodec(), 20, 20));
    GpImage* image = Load(source);
    for (const Codec* codec : {&BmpCodec(), &JpegCodec(), &GifCodec(), &TiffCodec(), &PngCodec()}) {
        const std::size_t length = SavedAsFile(image, *codec).size();
        for (std::size_t at = 0; at < length; at += 13) {
            StringStream target;
            target.failAt = at;
            EXPECT_EQ(Save(image, &target, *codec), Status::Win32Error) << at;
            target.failure = static_cast<StreamResult>(0x8007000E);
            EXPECT_EQ(Save(image, &target, *codec), Status::OutOfMemory) << at;
            EXPECT_EQ(target.references, 1) << at;
        }
        StringStream target;
        target.failAt = length;
        EXPECT_EQ(Save(image, &target, *codec), Status::Ok);
    }
    flat::GdipDisposeImage(image);
}

TEST_F(FlatStreams, StreamThatClaimsMoreThanWasAskedForIsNotBelieved) {
    StringStream source(FileOf(PngCodec()));
    source.claimsTooMuch = true;
    GpImage* image = nullptr;
    EXPECT_NE(Load(&source, &image), Status::Ok);
}

TEST_F(FlatStreams, NullsAndForeignHandlesAreRefused) {
    StringStream source(FileOf(PngCodec()));
    GpImage* image = Load(source);
    EXPECT_EQ(Load(nullptr, &image), Status::InvalidParameter);
    EXPECT_EQ(Load(&source, nullptr), Status::InvalidParameter);
    EXPECT_EQ(Save(image, nullptr, PngCodec()), Status::InvalidParameter);
    EXPECT_EQ(Save(nullptr, &source, PngCodec()), Status::InvalidParameter);
    EXPECT_EQ(Save(image, &source, IcoCodec()), Status::UnknownImageFormat);
    flat::GdipDisposeImage(image);
}

TEST_F(FlatStreams, TwoThreadsReadOneStreamInTurn) {
    StringStream source(FileOf(PngCodec(), 400, 300));
    GpImage* image = Load(source);
    StringStream expected;
    ASSERT_EQ(Save(image, &expected, BmpCodec()), Status::Ok);
    StringStream targets[2];
    std::thread other([&] { EXPECT_EQ(Save(image, &targets[0], BmpCodec()), Status::Ok); });
    EXPECT_EQ(Save(image, &targets[1], BmpCodec()), Status::Ok);
    other.join();
    EXPECT_EQ(targets[0].bytes, expected.bytes);
    EXPECT_EQ(targets[1].bytes, expected.bytes);
    flat::GdipDisposeImage(image);
}

TEST(OutputStreams, GapsAreZeros) {
    StringStream target;
    const auto file = MakeOutputStream(&target);
    EXPECT_EQ(file->WriteAt(10000, "end", 3), Status::Ok);
    EXPECT_EQ(file->WriteAt(0, "start", 5), Status::Ok);
    EXPECT_EQ(file->Commit(), Status::Ok);
    EXPECT_EQ(target.bytes, "start" + std::string(9995, '\0') + "end");
    EXPECT_EQ(target.at, 10003u);
}

TEST(InputStreams, NothingIsReadBehindTheEnd) {
    StringStream source("abcdef", 2);
    const auto file = OpenInputStream(&source);
    ASSERT_TRUE(file.Ok());
    EXPECT_EQ((*file)->Size(), 4u);
    char buffer[8] = {};
    EXPECT_EQ(*(*file)->ReadAt(1, buffer, 8), 3u);
    EXPECT_STREQ(buffer, "def");
    EXPECT_EQ(*(*file)->ReadAt(4, buffer, 8), 0u);
    EXPECT_EQ(*(*file)->ReadAt(~std::uint64_t{0}, buffer, 8), 0u);
}

} // namespace
