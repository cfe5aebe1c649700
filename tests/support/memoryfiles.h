// Pictures written to and read from files that exist in memory only.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "tests/support/bytefiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tests {

inline imaginglibrary::Result<std::unique_ptr<imaginglibrary::Decoder>> OpenBytes(const imaginglibrary::Codec& codec,
                                                                                  std::string bytes) {
    return codec.open(std::make_shared<MemoryInput>(std::move(bytes)));
}

// The file that a codec makes of a picture; empty where it fails.
inline std::string BytesWritten(const imaginglibrary::Codec& codec, const imaginglibrary::PixelSource& picture) {
    MemoryOutput file;
    if (codec.write(picture, {}, {}, file) != imaginglibrary::Status::Ok ||
        file.Commit() != imaginglibrary::Status::Ok) {
        return {};
    }
    return file.Bytes();
}

// A file that must open; none where the test fails over it.
inline std::unique_ptr<imaginglibrary::Decoder> Opened(const imaginglibrary::Codec& codec, std::string bytes) {
    auto picture = OpenBytes(codec, std::move(bytes));
    EXPECT_EQ(picture.GetStatus(), imaginglibrary::Status::Ok);
    return picture.Ok() ? std::move(*picture) : nullptr;
}

// What a codec reads of what it wrote.
inline std::unique_ptr<imaginglibrary::Decoder> Rewritten(const imaginglibrary::Codec& codec,
                                                          const imaginglibrary::PixelSource& picture) {
    return Opened(codec, BytesWritten(codec, picture));
}

// Opens and reads a file that may be broken in any way; the status of whichever failed first.
inline imaginglibrary::Status ReadAllRows(const imaginglibrary::Codec& codec, std::string bytes) {
    const auto picture = OpenBytes(codec, std::move(bytes));
    return picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus();
}

// All pixels of a file that must open.
inline std::vector<imaginglibrary::Color> ColorsOf(const imaginglibrary::Codec& codec, std::string bytes) {
    const auto picture = Opened(codec, std::move(bytes));
    return picture ? ColorsOf(*picture) : std::vector<imaginglibrary::Color>();
}

} // namespace tests
