// How a picture is to be encoded, where the format leaves a choice.
#pragma once

namespace imaginglibrary {

// Of TIFF files, for pictures that it suits; PNG files know Quick and Small.
enum class Compression {
    Usual, // TIFF: LZW, and CCITT G4 for black and white
    None,
    Lzw,
    Deflate,
    Fax, // CCITT G4
    Jpeg,
    Quick, // larger, and done sooner
    Small, // smaller, and done later
};

struct WriteOptions {
    static constexpr int UsualQuality = 75;

    int quality = UsualQuality; // of JPEG, 0 to 100
    Compression compression = Compression::Usual;
};

} // namespace imaginglibrary
