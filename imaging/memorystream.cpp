// Memory as a stream that the imaging library reads or writes.
#include "imaging/memorystream.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

namespace lumbrix {

namespace {

constexpr std::uint32_t TypeOfStreams = 2;
constexpr std::uint32_t ModeRead = 0;
constexpr std::uint32_t ModeReadWrite = 2;

template <class Number> void Answer(Number* place, Number number) {
    if (place != nullptr) {
        *place = number;
    }
}

class MemoryStream final : public FlatStream {
  public:
    MemoryStream(MemoryBytes bytes, std::shared_ptr<GrowingMemory> memory)
        : FlatStream{&Functions}, bytes_(bytes), memory_(std::move(memory)) {}
    MemoryStream(const MemoryStream& other)
        : FlatStream{&Functions}, bytes_(other.bytes_), memory_(other.memory_), position_(other.position_) {}
    MemoryStream& operator=(const MemoryStream&) = delete;

  private:
    ~MemoryStream() = default; // by the last reference

    static MemoryStream& Of(FlatStream* stream) { return *static_cast<MemoryStream*>(stream); }

    MemoryBytes Bytes() const { return memory_ != nullptr ? memory_->Bytes() : bytes_; }

    // What lies behind the position, no more than `count` of it.
    MemoryBytes Next(std::uint64_t count) const {
        const MemoryBytes all = Bytes();
        const auto from = static_cast<std::size_t>(std::min<std::uint64_t>(position_, all.length));
        return {static_cast<const std::uint8_t*>(all.data) + from,
                static_cast<std::size_t>(std::min<std::uint64_t>(count, all.length - from))};
    }

    static StreamResult LUMBRIX_FLAT_CALL QueryInterface(FlatStream* stream, const Clsid* id, void** object) {
        if (object == nullptr || id == nullptr) {
            return StreamBadPointer;
        }
        const bool isKnown = *id == StreamInterface || *id == SequentialStreamInterface || *id == UnknownInterface;
        *object = isKnown ? stream : nullptr;
        if (isKnown) {
            AddReference(stream);
        }
        return isKnown ? StreamOk : StreamNoInterface;
    }

    static std::uint32_t LUMBRIX_FLAT_CALL AddReference(FlatStream* stream) { return ++Of(stream).references_; }

    static std::uint32_t LUMBRIX_FLAT_CALL Release(FlatStream* stream) {
        const std::uint32_t left = --Of(stream).references_;
        if (left == 0) {
            delete &Of(stream);
        }
        return left;
    }

    static StreamResult LUMBRIX_FLAT_CALL Read(FlatStream* stream, void* buffer, std::uint32_t count,
                                               std::uint32_t* read) {
        const MemoryBytes next = Of(stream).Next(count);
        if (next.length > 0) {
            std::memcpy(buffer, next.data, next.length);
        }
        Of(stream).position_ += next.length;
        Answer(read, static_cast<std::uint32_t>(next.length));
        return next.length == count ? StreamOk : StreamEnded;
    }

    static StreamResult LUMBRIX_FLAT_CALL Write(FlatStream* stream, const void* bytes, std::uint32_t count,
                                                std::uint32_t* written) {
        MemoryStream& self = Of(stream);
        Answer(written, std::uint32_t{0});
        if (self.memory_ == nullptr) {
            return StreamAccessDenied;
        }
        const std::uint64_t end = self.position_ + count;
        if (end > self.memory_->Size() && !self.memory_->Resize(end)) {
            return StreamOutOfMemory;
        }
        if (count > 0) {
            std::memcpy(self.memory_->Data() + self.position_, bytes, count);
        }
        self.position_ = end;
        Answer(written, count);
        return StreamOk;
    }

    static StreamResult LUMBRIX_FLAT_CALL Seek(FlatStream* stream, std::int64_t move, std::uint32_t origin,
                                               std::uint64_t* position) {
        MemoryStream& self = Of(stream);
        std::uint64_t from = 0;
        if (origin == FromCurrent) {
            from = self.position_;
        } else if (origin == FromEnd) {
            from = self.Bytes().length;
        } else if (origin != FromStart) {
            return StreamBadPosition;
        }
        const std::uint64_t place = from + static_cast<std::uint64_t>(move);
        if (place > INT64_MAX) { // before the beginning, or too far
            return StreamBadPosition;
        }
        self.position_ = place;
        Answer(position, place);
        return StreamOk;
    }

    static StreamResult LUMBRIX_FLAT_CALL SetSize(FlatStream* stream, std::uint64_t size) {
        MemoryStream& self = Of(stream);
        if (self.memory_ == nullptr) {
            return StreamAccessDenied;
        }
        return self.memory_->Resize(size) ? StreamOk : StreamOutOfMemory;
    }

    static StreamResult LUMBRIX_FLAT_CALL CopyTo(FlatStream* stream, FlatStream* target, std::uint64_t count,
                                                 std::uint64_t* read, std::uint64_t* written) {
        constexpr std::uint64_t LargestStep = 1u << 20;
        std::uint64_t done = 0;
        StreamResult result = StreamOk;
        while (done < count && result >= 0) {
            const MemoryBytes next = Of(stream).Next(std::min(count - done, LargestStep));
            std::uint32_t step = 0;
            if (next.length == 0) {
                break;
            }
            result = target->functions->write(target, next.data, static_cast<std::uint32_t>(next.length), &step);
            Of(stream).position_ += step;
            done += step;
            result = result >= 0 && step == 0 ? StreamAccessDenied : result;
        }
        Answer(read, done);
        Answer(written, done);
        return result;
    }

    static StreamResult LUMBRIX_FLAT_CALL Commit(FlatStream* /*stream*/, std::uint32_t /*flags*/) { return StreamOk; }
    static StreamResult LUMBRIX_FLAT_CALL Revert(FlatStream* /*stream*/) { return StreamNotImplemented; }
    static StreamResult LUMBRIX_FLAT_CALL Lock(FlatStream* /*stream*/, std::uint64_t /*offset*/,
                                               std::uint64_t /*count*/, std::uint32_t /*kind*/) {
        return StreamNotImplemented;
    }

    static StreamResult LUMBRIX_FLAT_CALL Stat(FlatStream* stream, StreamFacts* facts, std::uint32_t /*flags*/) {
        if (facts == nullptr) {
            return StreamBadPointer;
        }
        *facts = {};
        facts->type = TypeOfStreams;
        facts->size = Of(stream).Bytes().length;
        facts->mode = Of(stream).memory_ != nullptr ? ModeReadWrite : ModeRead;
        return StreamOk;
    }

    static StreamResult LUMBRIX_FLAT_CALL Clone(FlatStream* stream, FlatStream** clone) {
        if (clone == nullptr) {
            return StreamBadPointer;
        }
        *clone = new (std::nothrow) MemoryStream(Of(stream));
        return *clone != nullptr ? StreamOk : StreamOutOfMemory;
    }

    static constexpr FlatStreamFunctions Functions{QueryInterface, AddReference, Release, Read, Write, Seek, SetSize,
                                                   CopyTo,         Commit,       Revert,  Lock, Lock,  Stat, Clone};

    MemoryBytes bytes_;
    std::shared_ptr<GrowingMemory> memory_; // null for bytes that are only read
    std::uint64_t position_ = 0;
    std::atomic<std::uint32_t> references_ = 1;
};

} // namespace

void StreamRelease::operator()(FlatStream* stream) const { stream->functions->release(stream); }

OwnedStream ReadingStream(MemoryBytes bytes) { return OwnedStream(new MemoryStream(bytes, nullptr)); }

OwnedStream WritingStream(std::shared_ptr<GrowingMemory> memory) {
    return OwnedStream(new MemoryStream({}, std::move(memory)));
}

} // namespace lumbrix
