// One row per file format: how to know it, how to open it, how to write it. A new format is a new folder and a new row.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/guid.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace imaginglibrary {

// Bytes that stand at a fixed offset of every file of a format.
struct Signature {
    std::size_t offset;
    std::string_view bytes;
};

struct Codec {
    const char16_t* name;
    const char16_t* mimeType;
    const char16_t* extensions; // "*.JPG;*.JPEG"
    const char16_t* formatName; // "JPEG"
    Guid classId;
    Guid formatId;
    std::span<const Signature> signatures; // any one of them is enough

    // Reads the header only. UndecodableContent for a file that is not what its signature promised.
    Result<std::unique_ptr<Decoder>> (*open)(std::shared_ptr<const InputFile> file);

    // Writes a whole picture, row by row, with those of the properties that the format can carry, without committing
    // the file. Options of other formats are passed over. Null where the format is only read.
    Status (*write)(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                    OutputFile& file);
};

// All formats; those that can be written come first, in the platform's order.
std::span<const Codec> Codecs();

// The format of a file by its first bytes, or null.
const Codec* FindCodecFor(const InputFile& file);

// The format that writes under this class id, or null.
const Codec* FindEncoder(const Guid& classId);

} // namespace imaginglibrary
