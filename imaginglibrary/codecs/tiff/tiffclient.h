// libtiff over the library's own files, silent and with bounded memory.
#pragma once

#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"

#include <tiffio.h>

#include <bit>
#include <memory>

namespace imaginglibrary {

struct TiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

// For a file that was given up, or is whole: libtiff would write what is held back of it, and falls over what a lack of
// memory has left of that.
struct TiffDropper {
    void operator()(TIFF* tiff) const;
};

// A TIFF file open for reading, with the directory of its first picture read. Belongs to one thread at a time; any
// number may be open on one file.
class TiffInput {
  public:
    // UndecodableContent where there is no directory that can be read.
    static Result<std::unique_ptr<TiffInput>> Open(std::shared_ptr<const InputFile> file);

    TIFF* Get() const { return tiff_.get(); }

    // Why a call to libtiff failed: what the file says, if it was the file.
    Status Failure() const { return status_ != Status::Ok ? status_ : UndecodableContent; }

  private:
    friend struct TiffInputCallbacks;
    explicit TiffInput(std::shared_ptr<const InputFile> file) : file_(std::move(file)) {}

    std::shared_ptr<const InputFile> file_;
    std::uint64_t position_ = 0;
    Status status_ = Status::Ok;
    std::unique_ptr<TIFF, TiffCloser> tiff_;
};

// A TIFF file being written.
class TiffOutput {
  public:
    static Result<std::unique_ptr<TiffOutput>> Create(OutputFile& file, std::endian order = std::endian::little);

    TIFF* Get() const { return tiff_.get(); }

    // Writes the directory and whatever is still held back. The status of everything so far; the file is closed then.
    Status Finish();

    // Why a call to libtiff failed: what the file says, if it was the file, GenericError for one that becomes longer
    // than such files can be; else there was no memory.
    Status Failure() const;

  private:
    friend struct TiffOutputCallbacks;
    explicit TiffOutput(OutputFile& file) : file_(file) {}

    OutputFile& file_;
    std::uint64_t position_ = 0;
    Status status_ = Status::Ok;
    std::unique_ptr<TIFF, TiffDropper> tiff_;
};

} // namespace imaginglibrary
