// libtiff over the library's own files, silent and with bounded memory.
#include "imaginglibrary/codecs/tiff/tiffclient.h"

#include "imaginglibrary/core/limits.h"

#include <cstdarg>
#include <cstdio>
#include <fcntl.h>

namespace imaginglibrary {

namespace {

// Fewer bytes than were asked for. Where a reading fails libtiff clears its buffer from the last byte on that it got,
// so -1 would let it write before the buffer.
constexpr tmsize_t Failed = 0;

// Says that the message was dealt with, so that nothing is printed.
int Silence(TIFF*, void*, const char*, const char*, va_list) { return 1; }

struct OptionsCloser {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

std::unique_ptr<TIFFOpenOptions, OptionsCloser> MakeOptions() {
    std::unique_ptr<TIFFOpenOptions, OptionsCloser> options(TIFFOpenOptionsAlloc());
    if (options) {
        TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &Silence, nullptr);
        TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &Silence, nullptr);
        TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(MaximumTileBytes));
    }
    return options;
}

toff_t MovePosition(std::uint64_t& position, std::uint64_t size, toff_t offset, int origin) {
    switch (origin) {
    case SEEK_CUR:
        position += offset;
        break;
    case SEEK_END:
        position = size + offset;
        break;
    default:
        position = offset;
        break;
    }
    return position;
}

// Files are closed by their owners.
int LeaveOpen(thandle_t) { return 0; }

} // namespace

void TiffDropper::operator()(TIFF* tiff) const {
    TIFFSetMode(tiff, O_RDONLY);
    TIFFClose(tiff);
}

// The functions libtiff calls. An exception must not travel through the C library.
struct TiffInputCallbacks {
    static tmsize_t Read(thandle_t handle, void* buffer, tmsize_t count) noexcept {
        auto& input = *static_cast<TiffInput*>(handle);
        try {
            const auto read = input.file_->ReadAt(input.position_, buffer, static_cast<std::size_t>(count));
            if (!read.Ok()) {
                input.status_ = read.GetStatus();
                return Failed;
            }
            input.position_ += *read;
            return static_cast<tmsize_t>(*read);
        } catch (...) {
            input.status_ = Status::OutOfMemory;
            return Failed;
        }
    }

    static tmsize_t Write(thandle_t, void*, tmsize_t) noexcept { return Failed; }

    static toff_t Seek(thandle_t handle, toff_t offset, int origin) noexcept {
        auto& input = *static_cast<TiffInput*>(handle);
        return MovePosition(input.position_, input.file_->Size(), offset, origin);
    }

    static toff_t Size(thandle_t handle) noexcept { return static_cast<TiffInput*>(handle)->file_->Size(); }
};

struct TiffOutputCallbacks {
    static tmsize_t Read(thandle_t handle, void* buffer, tmsize_t count) noexcept {
        auto& output = *static_cast<TiffOutput*>(handle);
        try {
            const auto read = output.file_.ReadAt(output.position_, buffer, static_cast<std::size_t>(count));
            if (!read.Ok()) {
                output.status_ = read.GetStatus();
                return Failed;
            }
            output.position_ += *read;
            return static_cast<tmsize_t>(*read);
        } catch (...) {
            output.status_ = Status::OutOfMemory;
            return Failed;
        }
    }

    static tmsize_t Write(thandle_t handle, void* buffer, tmsize_t count) noexcept {
        auto& output = *static_cast<TiffOutput*>(handle);
        try {
            const Status status = output.file_.WriteAt(output.position_, buffer, static_cast<std::size_t>(count));
            if (status != Status::Ok) {
                output.status_ = status;
                return Failed;
            }
            output.position_ += static_cast<std::uint64_t>(count);
            return count;
        } catch (...) {
            output.status_ = Status::OutOfMemory;
            return Failed;
        }
    }

    static toff_t Seek(thandle_t handle, toff_t offset, int origin) noexcept {
        auto& output = *static_cast<TiffOutput*>(handle);
        return MovePosition(output.position_, output.file_.Size(), offset, origin);
    }

    static toff_t Size(thandle_t handle) noexcept { return static_cast<TiffOutput*>(handle)->file_.Size(); }
};

Result<std::unique_ptr<TiffInput>> TiffInput::Open(std::shared_ptr<const InputFile> file) {
    std::unique_ptr<TiffInput> input(new TiffInput(std::move(file)));
    const auto options = MakeOptions();
    if (!options) {
        return Status::OutOfMemory;
    }
    // "m": the file is not mapped into memory.
    input->tiff_.reset(TIFFClientOpenExt("picture", "rm", input.get(), &TiffInputCallbacks::Read,
                                         &TiffInputCallbacks::Write, &TiffInputCallbacks::Seek, &LeaveOpen,
                                         &TiffInputCallbacks::Size, nullptr, nullptr, options.get()));
    if (!input->tiff_) {
        return input->Failure();
    }
    return input;
}

Result<std::unique_ptr<TiffOutput>> TiffOutput::Create(OutputFile& file, std::endian order) {
    std::unique_ptr<TiffOutput> output(new TiffOutput(file));
    const auto options = MakeOptions();
    if (!options) {
        return Status::OutOfMemory;
    }
    // The byte order is the same on every machine.
    const char* const mode = order == std::endian::little ? "wlm" : "wbm";
    output->tiff_.reset(TIFFClientOpenExt("picture", mode, output.get(), &TiffOutputCallbacks::Read,
                                          &TiffOutputCallbacks::Write, &TiffOutputCallbacks::Seek, &LeaveOpen,
                                          &TiffOutputCallbacks::Size, nullptr, nullptr, options.get()));
    if (!output->tiff_) {
        return output->Failure();
    }
    return output;
}

Status TiffOutput::Failure() const {
    constexpr std::uint64_t NearTheLongest = std::uint64_t{3} << 30; // which is 4 GiB
    if (status_ != Status::Ok) {
        return status_;
    }
    return file_.Size() > NearTheLongest ? Status::GenericError : Status::OutOfMemory;
}

Status TiffOutput::Finish() {
    const bool isWritten = TIFFWriteDirectory(tiff_.get()) == 1;
    tiff_.reset();
    return isWritten ? status_ : Failure();
}

} // namespace imaginglibrary
