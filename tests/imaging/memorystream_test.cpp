// Memory in the place of files, and the streams over it, by the functions that the imaging library calls.
#include "imaging/memorystream.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace lumbrix;

std::string TextOf(MemoryBytes bytes) { return {static_cast<const char*>(bytes.data), bytes.length}; }

// What up to 100 bytes read as.
std::string ReadFrom(const OwnedStream& stream, std::uint32_t count = 100) {
    char buffer[100];
    std::uint32_t read = 77;
    const StreamResult result = stream->functions->read(stream.get(), buffer, count, &read);
    EXPECT_EQ(result, read == count ? 0 : 1);
    return {buffer, read};
}

StreamResult MoveTo(const OwnedStream& stream, std::int64_t move, std::uint32_t origin,
                    std::uint64_t* place = nullptr) {
    return stream->functions->seek(stream.get(), move, origin, place);
}

StreamResult WriteTo(const OwnedStream& stream, const std::string& text) {
    return stream->functions->write(stream.get(), text.data(), static_cast<std::uint32_t>(text.size()), nullptr);
}

TEST(MemoryStreams, AreReadFromTheirPlaceToTheirEnd) {
    const OwnedStream stream = ReadingStream({"abcdef", 6});
    EXPECT_EQ(ReadFrom(stream, 2), "ab");
    EXPECT_EQ(ReadFrom(stream), "cdef");
    EXPECT_EQ(ReadFrom(stream), "");
    std::uint64_t place = 0;
    EXPECT_EQ(MoveTo(stream, 1, 0, &place), 0);
    EXPECT_EQ(place, 1u);
    EXPECT_EQ(MoveTo(stream, 2, 1, &place), 0);
    EXPECT_EQ(place, 3u);
    EXPECT_EQ(ReadFrom(stream), "def");
    EXPECT_EQ(MoveTo(stream, -2, 2, &place), 0);
    EXPECT_EQ(place, 4u);
    EXPECT_EQ(MoveTo(stream, -5, 1, &place), StreamBadPosition);
    EXPECT_EQ(MoveTo(stream, 0, 3, &place), StreamBadPosition);
    EXPECT_EQ(place, 4u);
    EXPECT_EQ(ReadFrom(stream), "ef");
    EXPECT_EQ(MoveTo(stream, 100, 0), 0);
    EXPECT_EQ(ReadFrom(stream), "");
}

TEST(MemoryStreams, ThatAreReadAreNotWritten) {
    const OwnedStream stream = ReadingStream({"abc", 3});
    EXPECT_EQ(WriteTo(stream, "x"), StreamAccessDenied);
    EXPECT_EQ(stream->functions->setSize(stream.get(), 1), StreamAccessDenied);
    EXPECT_EQ(ReadFrom(stream), "abc");
}

TEST(MemoryStreams, GrowWithZerosInGaps) {
    const auto memory = std::make_shared<GrowingMemory>();
    const OwnedStream stream = WritingStream(memory);
    EXPECT_EQ(WriteTo(stream, "abc"), 0);
    EXPECT_EQ(MoveTo(stream, 5, 0), 0);
    EXPECT_EQ(WriteTo(stream, "f"), 0);
    EXPECT_EQ(MoveTo(stream, 1, 0), 0);
    EXPECT_EQ(WriteTo(stream, "B"), 0);
    EXPECT_EQ(TextOf(memory->Bytes()), std::string("aBc\0\0f", 6));
    EXPECT_EQ(ReadFrom(stream, 2), std::string("c\0", 2));
    EXPECT_EQ(stream->functions->setSize(stream.get(), 2), 0);
    EXPECT_EQ(TextOf(memory->Bytes()), "aB");
    EXPECT_EQ(stream->functions->setSize(stream.get(), 3), 0);
    EXPECT_EQ(TextOf(memory->Bytes()), std::string("aB\0", 3)) << "what was cut off does not come back";
}

TEST(MemoryStreams, SayWhenThereIsNoMemory) {
    const auto memory = std::make_shared<GrowingMemory>();
    const OwnedStream stream = WritingStream(memory);
    WriteTo(stream, "abc");
    EXPECT_EQ(MoveTo(stream, INT64_MAX, 0), 0);
    EXPECT_EQ(WriteTo(stream, "x"), StreamOutOfMemory);
    EXPECT_EQ(stream->functions->setSize(stream.get(), UINT64_MAX), StreamOutOfMemory);
    EXPECT_EQ(TextOf(memory->Bytes()), "abc");
}

TEST(MemoryStreams, TellWhatTheyAre) {
    const OwnedStream reading = ReadingStream({"abc", 3});
    StreamFacts facts{};
    EXPECT_EQ(reading->functions->stat(reading.get(), &facts, 1), 0);
    EXPECT_EQ(facts.type, 2u);
    EXPECT_EQ(facts.size, 3u);
    EXPECT_EQ(facts.mode, 0u);
    const OwnedStream writing = WritingStream(std::make_shared<GrowingMemory>());
    EXPECT_EQ(writing->functions->stat(writing.get(), &facts, 1), 0);
    EXPECT_EQ(facts.size, 0u);
    EXPECT_EQ(facts.mode, 2u);
    EXPECT_NE(writing->functions->stat(writing.get(), nullptr, 1), 0);
}

TEST(MemoryStreams, AnswerToTheirThreeInterfaces) {
    const OwnedStream stream = ReadingStream({"abc", 3});
    // The identifiers as they are published.
    const Clsid unknown{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    const Clsid sequential{0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0, 0xAA, 0, 0x44, 0x77, 0x3D}};
    const Clsid whole{0xC, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    const Clsid other{0xD, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    void* object = nullptr;
    for (const Clsid& id : {unknown, sequential, whole}) {
        EXPECT_EQ(stream->functions->queryInterface(stream.get(), &id, &object), 0);
        EXPECT_EQ(object, stream.get());
        EXPECT_EQ(stream->functions->release(stream.get()), 1u);
    }
    EXPECT_EQ(stream->functions->queryInterface(stream.get(), &other, &object), StreamNoInterface);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(stream->functions->addReference(stream.get()), 2u);
    EXPECT_EQ(stream->functions->release(stream.get()), 1u);
}

TEST(MemoryStreams, ClonesHaveAPlaceOfTheirOwn) {
    const OwnedStream stream = ReadingStream({"abc", 3});
    EXPECT_EQ(ReadFrom(stream, 1), "a");
    FlatStream* made = nullptr;
    ASSERT_EQ(stream->functions->clone(stream.get(), &made), 0);
    const OwnedStream clone(made);
    EXPECT_EQ(ReadFrom(stream), "bc");
    EXPECT_EQ(ReadFrom(clone), "bc");
    EXPECT_EQ(clone->functions->addReference(clone.get()), 2u) << "one of its own";
    clone->functions->release(clone.get());
}

TEST(MemoryStreams, AreCopied) {
    const OwnedStream stream = ReadingStream({"abcdef", 6});
    const auto memory = std::make_shared<GrowingMemory>();
    const OwnedStream target = WritingStream(memory);
    std::uint64_t read = 0, written = 0;
    EXPECT_EQ(stream->functions->copyTo(stream.get(), target.get(), 4, &read, &written), 0);
    EXPECT_EQ(TextOf(memory->Bytes()), "abcd");
    EXPECT_EQ(read, 4u);
    EXPECT_EQ(written, 4u);
    EXPECT_EQ(stream->functions->copyTo(stream.get(), target.get(), UINT64_MAX, nullptr, nullptr), 0);
    EXPECT_EQ(TextOf(memory->Bytes()), "abcdef");
    const OwnedStream again = ReadingStream({"x", 1});
    EXPECT_EQ(again->functions->copyTo(again.get(), stream.get(), 1, &read, &written), StreamAccessDenied);
    EXPECT_EQ(written, 0u);
}

TEST(GrowingMemory, IsHandedOverAndNeverNull) {
    GrowingMemory memory;
    ASSERT_TRUE(memory.Resize(100000));
    memory.Data()[99999] = 7;
    auto* bytes = static_cast<std::uint8_t*>(memory.Release());
    EXPECT_EQ(bytes[99999], 7);
    EXPECT_EQ(bytes[0], 0);
    std::free(bytes);
    EXPECT_EQ(memory.Size(), 0u);
    void* none = memory.Release();
    EXPECT_NE(none, nullptr);
    std::free(none);
}

// Gives `length` bytes, at most `step` at once.
ByteReader Giving(std::size_t length, std::int64_t step) {
    return [left = static_cast<std::int64_t>(length), step](void* buffer, std::uint32_t count) mutable {
        const std::int64_t now = std::min({left, step, std::int64_t{count}});
        std::fill_n(static_cast<char*>(buffer), now, 'x');
        left -= now;
        return now;
    };
}

TEST(GatherBytes, ReadsToTheEndInWhateverPieces) {
    for (const std::int64_t step : {1, 7, 65536}) {
        GrowingMemory bytes;
        EXPECT_EQ(GatherBytes(Giving(70000, step), bytes), Done);
        EXPECT_EQ(TextOf(bytes.Bytes()), std::string(70000, 'x'));
    }
}

TEST(GatherBytes, StopsWhereThereIsTooMuch) {
    GrowingMemory all;
    EXPECT_EQ(GatherBytes(Giving(1000, 100), all, 1000), Done);
    GrowingMemory tooMuch;
    EXPECT_EQ(GatherBytes(Giving(1001, 100), tooMuch, 1000), OutOfMemory);
    int calls = 0;
    GrowingMemory endless;
    EXPECT_EQ(GatherBytes(
                  [&](void*, std::uint32_t count) {
                      ++calls;
                      return std::int64_t{count};
                  },
                  endless, 100000),
              OutOfMemory);
    EXPECT_EQ(calls, 2);
}

TEST(GatherBytes, AnswersThatCannotBeAreFailures) {
    GrowingMemory bytes;
    EXPECT_EQ(GatherBytes([](void*, std::uint32_t) { return std::int64_t{-1}; }, bytes), Win32Error);
    EXPECT_EQ(GatherBytes([](void*, std::uint32_t count) { return std::int64_t{count} + 1; }, bytes), Win32Error);
}

} // namespace
