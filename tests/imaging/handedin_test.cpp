// The truthful procedures from memory and callbacks to memory and callbacks.
#include "tests/imaging/editingfixture.h"

#include <atomic>
#include <cstring>
#include <thread>

namespace {

using namespace tests;

// Reads from a string, or fails at a byte.
struct Reading {
    std::string bytes;
    std::size_t failAt = SIZE_MAX;
    std::uint32_t most = UINT32_MAX;
    std::size_t done = 0;
    int calls = 0;
};

std::int32_t LUMBRIX_CALL ReadIt(void* context, void* buffer, std::uint32_t count) {
    auto& reading = *static_cast<Reading*>(context);
    ++reading.calls;
    const std::size_t end =
        std::min({reading.bytes.size(), reading.failAt, reading.done + std::min(count, reading.most)});
    if (end == reading.done && reading.failAt == reading.done) {
        return -1;
    }
    std::memcpy(buffer, reading.bytes.data() + reading.done, end - reading.done);
    const auto step = static_cast<std::int32_t>(end - reading.done);
    reading.done = end;
    return step;
}

struct Written {
    std::string bytes;
    int calls = 0;
    int failAt = 0; // the call
};

std::int32_t LUMBRIX_CALL WriteIt(void* context, const void* bytes, std::uint32_t count) {
    auto& written = *static_cast<Written*>(context);
    written.bytes.append(static_cast<const char*>(bytes), count);
    return ++written.calls == written.failAt ? 0 : 1;
}

// A job from memory to memory.
struct MemoryJob {
    explicit MemoryJob(const std::string& bytes) {
        input.data = bytes.data();
        input.length = bytes.size();
        job.input = &input;
        job.output = &output;
    }
    ~MemoryJob() { lumbrix_free(output.data); }
    MemoryJob(const MemoryJob&) = delete;
    MemoryJob& operator=(const MemoryJob&) = delete;

    std::string Bytes() const { return {static_cast<const char*>(output.data), output.length}; }

    lumbrix_input input = LUMBRIX_INPUT_INIT;
    lumbrix_output output = LUMBRIX_OUTPUT_INIT;
    lumbrix_job job = LUMBRIX_JOB_INIT;
};

class HandedIn : public Editing {
  protected:
    // A picture file of a format, with pixels that compress badly.
    std::string Picture(const Codec& codec = PngCodec()) const {
        Make("picture", *MakePicture(PixelFormat::Rgb24, 70, 50), codec);
        return ReadBytes(folder_ / "picture");
    }
};

using Operation = std::function<int32_t(const char*, const char*, lumbrix_job*)>;

// Every operation that writes, with a stamp file.
std::vector<std::pair<const char*, Operation>> WritingDoors(const std::string& stamp) {
    return {
        {"convert", [](auto from, auto to, auto job) { return lumbrix_convert(from, to, job); }},
        {"thumb", [](auto from, auto to, auto job) { return lumbrix_thumb(from, to, 20, job); }},
        {"resize", [](auto from, auto to, auto job) { return lumbrix_resize(from, to, 33, job); }},
        {"crop",
         [](auto from, auto to, auto job) {
             const lumbrix_rectangle part{3, 4, 30, 20};
             return lumbrix_crop(from, to, &part, job);
         }},
        {"rotate",
         [](auto from, auto to, auto job) {
             lumbrix_turn turn = LUMBRIX_TURN_INIT;
             turn.angle = 90;
             return lumbrix_rotate(from, to, &turn, job);
         }},
        {"annotate",
         [](auto from, auto to, auto job) {
             lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
             annotation.text = "H";
             annotation.font = "Arial";
             annotation.font_size = 30;
             return lumbrix_annotate(from, to, &annotation, job);
         }},
        {"stamp",
         [stamp](auto from, auto to, auto job) {
             lumbrix_stamp_place place = LUMBRIX_STAMP_PLACE_INIT;
             place.stamp = stamp.c_str();
             return lumbrix_stamp(from, to, &place, job);
         }},
        {"date", [](auto from, auto to, auto job) { return lumbrix_date_stamp(from, to, "today", job); }},
    };
}

TEST_F(HandedIn, EachOperationIsFromMemoryToMemoryWhatItIsFromFileToFile) {
    const std::string stamp = MakeWhite("s.png", 2, 2);
    for (const Codec* codec : {&BmpCodec(), &JpegCodec(), &GifCodec(), &TiffCodec(), &PngCodec()}) {
        const std::string bytes = Picture(*codec);
        for (const char* format : {"bmp", "jpg", "gif", "tif", "png"}) {
            for (const auto& [name, operate] : WritingDoors(stamp)) {
                lumbrix_job toFile = LUMBRIX_JOB_INIT;
                toFile.format = format;
                ASSERT_EQ(operate(Path("picture").c_str(), Path("out").c_str(), &toFile), 0) << toFile.message;
                MemoryJob memory(bytes);
                memory.job.format = format;
                EXPECT_EQ(operate(nullptr, nullptr, &memory.job), 0) << name << ": " << memory.job.message;
                EXPECT_EQ(memory.Bytes() == ReadBytes(folder_ / "out"), true) << name << " to " << format;
                EXPECT_EQ(memory.job.written, 1);
                EXPECT_EQ(memory.job.width, toFile.width);
                EXPECT_EQ(memory.job.height, toFile.height);
                EXPECT_STREQ(memory.job.message, "");
            }
        }
    }
}

TEST_F(HandedIn, EitherEndMayBeAFile) {
    const std::string bytes = Picture();
    MemoryJob memory(bytes);
    memory.job.output = nullptr;
    EXPECT_EQ(lumbrix_convert(nullptr, Path("a.bmp").c_str(), &memory.job), 0) << memory.job.message;
    memory.job.input = nullptr;
    memory.job.output = &memory.output;
    memory.job.format = "bmp";
    EXPECT_EQ(lumbrix_convert(Path("picture").c_str(), nullptr, &memory.job), 0) << memory.job.message;
    EXPECT_EQ(memory.Bytes(), ReadBytes(folder_ / "a.bmp"));
}

TEST_F(HandedIn, FileOfTheNameThatAMessageIsGivenIsNeitherReadNorWritten) {
    const std::string bytes = Picture();
    WriteBytes(folder_ / "there.png", "old");
    MemoryJob memory(bytes);
    memory.job.format = "png";
    memory.job.keep_existing = 1;
    EXPECT_EQ(lumbrix_convert(Path("there.png").c_str(), Path("there.png").c_str(), &memory.job), 0)
        << memory.job.message;
    EXPECT_EQ(ReadBytes(folder_ / "there.png"), "old");
}

TEST_F(HandedIn, ReadingProceduresTakeAnInput) {
    std::string bytes = ReadBytes(LUMBRIX_SAMPLES "/photo.jpg");
    MemoryJob memory(bytes);
    EXPECT_EQ(lumbrix_read_size(nullptr, &memory.job), 0);
    EXPECT_EQ(memory.job.width, 1600);
    EXPECT_EQ(memory.job.height, 1067);
    char* text = nullptr;
    EXPECT_EQ(lumbrix_read_date(nullptr, &text, &memory.job), 0);
    EXPECT_STREQ(text, "2026:11:21 09:30:00");
    EXPECT_EQ(lumbrix_read_properties(nullptr, &text, &memory.job), 0);
    EXPECT_NE(std::string(text).find("Camera Manufacturer\tLumbrix"), std::string::npos);
    lumbrix_free(text);
    EXPECT_EQ(memory.output.data, nullptr);
}

TEST_F(HandedIn, FormatMustBeNamedForAnOutput) {
    Reading reading{Picture()};
    MemoryJob memory("");
    memory.input.read = ReadIt;
    memory.input.context = &reading;
    EXPECT_EQ(lumbrix_convert(nullptr, "a.png", &memory.job), LUMBRIX_BAD_NAME);
    EXPECT_STREQ(memory.job.message, "cannot write a.png: its format must be named: bmp, jpg, gif, tif or png");
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_BAD_NAME);
    EXPECT_STREQ(memory.job.message, "cannot write the output: its format must be named: bmp, jpg, gif, tif or png");
    memory.job.format = "webp";
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_BAD_NAME);
    EXPECT_EQ(reading.calls, 0);
    memory.job.format = nullptr;
    EXPECT_EQ(lumbrix_date_stamp(nullptr, nullptr, "today", &memory.job), 0) << "always a JPEG";
    EXPECT_EQ(memory.Bytes().substr(0, 2), "\xFF\xD8");
}

TEST_F(HandedIn, CallbacksGiveAndTakeWhatFilesWould) {
    const std::string bytes = Picture(BmpCodec());
    for (const std::uint32_t most : {UINT32_MAX, 1u, 13u}) {
        Reading reading{.bytes = bytes, .most = most};
        Written written;
        MemoryJob memory("");
        memory.input.read = ReadIt;
        memory.input.context = &reading;
        memory.output.write = WriteIt;
        memory.output.context = &written;
        memory.job.format = "tif";
        EXPECT_EQ(lumbrix_resize(nullptr, nullptr, 33, &memory.job), 0) << memory.job.message;
        EXPECT_EQ(lumbrix_resize(Path("picture").c_str(), Path("b.tif").c_str(), 33, nullptr), 0);
        EXPECT_EQ(written.bytes == ReadBytes(folder_ / "b.tif"), true);
        EXPECT_EQ(memory.output.data, nullptr) << "not gathered besides";
    }
}

TEST_F(HandedIn, LargeOutputComesInPieces) {
    Make("large.bmp", *MakePicture(PixelFormat::Rgb24, 1000, 900), BmpCodec());
    Written written;
    lumbrix_output output = LUMBRIX_OUTPUT_INIT;
    output.write = WriteIt;
    output.context = &written;
    lumbrix_job job = LUMBRIX_JOB_INIT;
    job.output = &output;
    job.format = "bmp";
    EXPECT_EQ(lumbrix_convert(Path("large.bmp").c_str(), nullptr, &job), 0);
    EXPECT_GT(written.calls, 1);
    EXPECT_EQ(written.bytes.size(), std::filesystem::file_size(folder_ / "large.bmp"));
    for (int call = 1; call <= written.calls; ++call) {
        Written failing{.bytes = {}, .failAt = call};
        output.context = &failing;
        EXPECT_EQ(lumbrix_convert(Path("large.bmp").c_str(), nullptr, &job), LUMBRIX_WIN32_ERROR);
        EXPECT_EQ(failing.calls, call) << "not called again";
        EXPECT_EQ(job.written, 0);
        EXPECT_STREQ(job.message, "cannot write the output: its bytes were not taken");
    }
}

TEST_F(HandedIn, InputThatFailsAtAnyByteIsTold) {
    const std::string bytes = Picture(JpegCodec()); // which would be shown as far as it goes
    for (std::size_t at = 0; at <= bytes.size(); at += at < 40 ? 1 : 37) {
        Reading reading{.bytes = bytes, .failAt = at};
        MemoryJob memory("");
        memory.input.read = ReadIt;
        memory.input.context = &reading;
        memory.job.format = "png";
        ASSERT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_WIN32_ERROR) << at;
        ASSERT_STREQ(memory.job.message, "cannot read the input: its callback failed");
        ASSERT_EQ(memory.output.data, nullptr);
        char* text = nullptr;
        reading.done = 0;
        ASSERT_EQ(lumbrix_read_date(nullptr, &text, &memory.job), LUMBRIX_WIN32_ERROR);
        lumbrix_free(text);
    }
}

TEST_F(HandedIn, EmptyAndForeignInputIsNoPicture) {
    for (const std::string& bytes : {std::string(), std::string("Dear Sir or Madam")}) {
        MemoryJob memory(bytes);
        memory.job.format = "png";
        EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_OUT_OF_MEMORY);
        EXPECT_STREQ(memory.job.message,
                     "cannot read the input: it is not a picture that Lumbrix can read, or it is damaged");
        EXPECT_EQ(lumbrix_read_size("letter.txt", &memory.job), LUMBRIX_OUT_OF_MEMORY);
        EXPECT_NE(std::string(memory.job.message).find("cannot read letter.txt: "), std::string::npos);
    }
    lumbrix_input nothing = LUMBRIX_INPUT_INIT;
    lumbrix_job job = LUMBRIX_JOB_INIT;
    job.input = &nothing;
    EXPECT_EQ(lumbrix_read_size(nullptr, &job), LUMBRIX_OUT_OF_MEMORY);
}

TEST_F(HandedIn, DamagedInputIsShownOrRefusedAsAFileIs) {
    const std::string bytes = ReadBytes(LUMBRIX_SAMPLES "/photo.jpg");
    const std::string cut = bytes.substr(0, bytes.size() / 2);
    MemoryJob memory(cut);
    memory.job.format = "png";
    EXPECT_EQ(lumbrix_thumb(nullptr, nullptr, 100, &memory.job), 0);
    EXPECT_EQ(memory.job.damaged, 1);
    EXPECT_STREQ(memory.job.message, "the input is damaged: not all of it could be decoded");
    const std::string before = memory.Bytes();
    memory.job.strict = 1;
    EXPECT_EQ(lumbrix_thumb(nullptr, nullptr, 100, &memory.job), LUMBRIX_OUT_OF_MEMORY);
    EXPECT_STREQ(memory.job.message, "cannot read the input: it is damaged");
    EXPECT_EQ(memory.Bytes(), before) << "what was there stays";
}

TEST_F(HandedIn, NewBytesTakeThePlaceOfOlderOnes) {
    const std::string bytes = Picture();
    MemoryJob memory(bytes);
    memory.job.format = "png";
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), 0);
    const std::size_t first = memory.output.length;
    EXPECT_EQ(lumbrix_thumb(nullptr, nullptr, 5, &memory.job), 0); // the sanitizer sees what is not given back
    EXPECT_LT(memory.output.length, first);
}

TEST_F(HandedIn, StructsThatCannotBeMeantAreRefused) {
    const std::string bytes = Picture();
    MemoryJob memory(bytes);
    memory.job.format = "png";
    memory.input.size = sizeof memory.input - 1;
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_INVALID_PARAMETER);
    memory.input.size = sizeof memory.input;
    memory.output.size = 0;
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_INVALID_PARAMETER);
    memory.output.size = sizeof memory.output;
    memory.input.data = nullptr;
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_INVALID_PARAMETER);
    EXPECT_NE(std::string(memory.job.message).find("struct"), std::string::npos);
    memory.input.data = bytes.data();
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), 0);
}

TEST_F(HandedIn, JobWithoutTheseFieldsWorksOnFiles) {
    const std::string bytes = Picture();
    MemoryJob memory(bytes);
    memory.job.size = offsetof(lumbrix_job, message) + sizeof memory.job.message;
    EXPECT_EQ(lumbrix_convert(Path("picture").c_str(), Path("b.png").c_str(), &memory.job), 0);
    EXPECT_TRUE(Exists("b.png"));
    EXPECT_EQ(memory.output.data, nullptr);
    memory.job.size = offsetof(lumbrix_job, output); // knows of the input
    EXPECT_EQ(lumbrix_convert(nullptr, Path("c.png").c_str(), &memory.job), 0);
    EXPECT_TRUE(Exists("c.png"));
}

std::int32_t LUMBRIX_CALL CountAndStop(void* context, std::uint32_t, std::uint32_t) {
    return --*static_cast<int*>(context) > 0 ? 1 : 0;
}

TEST_F(HandedIn, CancelledOperationHandsNothingOver) {
    const std::string bytes = Picture();
    Written written;
    int left = 1;
    MemoryJob memory(bytes);
    memory.output.write = WriteIt;
    memory.output.context = &written;
    memory.job.format = "bmp";
    memory.job.progress = CountAndStop;
    memory.job.context = &left;
    EXPECT_EQ(lumbrix_convert(nullptr, nullptr, &memory.job), LUMBRIX_ABORTED);
    EXPECT_EQ(written.calls, 0);
    EXPECT_STREQ(memory.job.message, "cannot write the output: it was cancelled");
}

TEST_F(HandedIn, TwoThreadsWorkAtOnce) {
    const std::string bytes = Picture();
    const auto convert = [&] {
        MemoryJob memory(bytes);
        memory.job.format = "gif";
        return lumbrix_convert(nullptr, nullptr, &memory.job) == 0 ? memory.Bytes() : std::string("failed");
    };
    const std::string expected = convert();
    std::atomic<int> different = 0;
    const auto many = [&] {
        for (int i = 0; i < 20; ++i) {
            different += convert() != expected;
        }
    };
    std::thread other(many);
    many();
    other.join();
    EXPECT_EQ(different, 0);
}

} // namespace
