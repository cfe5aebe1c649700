// The registry: all formats in the platform's order, and how a file's format is known.
#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/codecs/rows.h"

#include <algorithm>
#include <array>

namespace imaginglibrary {

namespace {

const auto& Registry() {
    static const std::array registry{
        BmpCodec(), JpegCodec(), GifCodec(), TiffCodec(), PngCodec(), IcoCodec(),
#ifdef _WIN32
        EmfCodec(), WmfCodec(),
#endif
    };
    return registry;
}

bool Matches(const Signature& signature, std::string_view start) {
    return start.size() >= signature.offset + signature.bytes.size() &&
           start.substr(signature.offset, signature.bytes.size()) == signature.bytes;
}

} // namespace

std::span<const Codec> Codecs() { return Registry(); }

const Codec* FindCodecFor(const InputFile& file) {
    std::array<char, 64> bytes;
    const auto read = file.ReadAt(0, bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), read.Ok() ? *read : 0);
    for (const Codec& codec : Codecs()) {
        if (std::any_of(codec.signatures.begin(), codec.signatures.end(),
                        [&](const Signature& signature) { return Matches(signature, start); })) {
            return &codec;
        }
    }
    return nullptr;
}

const Codec* FindEncoder(const Guid& classId) {
    const auto codecs = Codecs();
    const auto found = std::find_if(codecs.begin(), codecs.end(), [&](const Codec& codec) {
        return codec.write != nullptr && codec.classId == classId;
    });
    return found == codecs.end() ? nullptr : &*found;
}

} // namespace imaginglibrary
