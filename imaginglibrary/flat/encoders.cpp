// The list of encoders, and saving with one of them.
#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/files/outputstream.h"
#include "imaginglibrary/flat/encoderparameters.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace imaginglibrary {

namespace {

// Encoder, decoder, for bitmaps, built in.
constexpr std::uint32_t BuiltInCodecFlags = 0x10007;

std::vector<const Codec*> Encoders() {
    std::vector<const Codec*> encoders;
    for (const Codec& codec : Codecs()) {
        if (codec.write != nullptr) {
            encoders.push_back(&codec);
        }
    }
    return encoders;
}

// The signatures of a format are of one length; they must match in every bit.
std::uint32_t SignatureBytes(const Codec& codec) {
    return static_cast<std::uint32_t>(codec.signatures[0].bytes.size());
}

// Texts and signatures lie behind the records, in the same block.
class Block {
  public:
    Block(std::uint8_t* start, std::size_t records) : next_(start + records * sizeof(ImageCodecInfo)) {}

    const char16_t* Put(std::u16string_view text) {
        auto* copy = reinterpret_cast<char16_t*>(next_);
        std::copy(text.begin(), text.end(), copy);
        copy[text.size()] = 0;
        next_ += (text.size() + 1) * sizeof(char16_t);
        return copy;
    }

    const std::uint8_t* Put(std::string_view bytes) {
        auto* copy = next_;
        next_ = std::copy(bytes.begin(), bytes.end(), next_);
        return copy;
    }

  private:
    std::uint8_t* next_;
};

std::size_t BytesBehindRecord(const Codec& codec) {
    const auto text = [](std::u16string_view value) { return (value.size() + 1) * sizeof(char16_t); };
    return text(codec.name) + text(codec.formatName) + text(codec.extensions) + text(codec.mimeType) +
           2 * codec.signatures.size() * SignatureBytes(codec);
}

std::size_t ListBytes() {
    std::size_t bytes = 0;
    for (const Codec* codec : Encoders()) {
        bytes += sizeof(ImageCodecInfo) + BytesBehindRecord(*codec);
    }
    return bytes;
}

// Two passes, since bytes would leave texts behind them at odd addresses.
void PutTexts(const Codec& codec, Block& block, ImageCodecInfo& info) {
    info.codecName = block.Put(std::u16string_view(codec.name));
    info.formatDescription = block.Put(std::u16string_view(codec.formatName));
    info.filenameExtension = block.Put(std::u16string_view(codec.extensions));
    info.mimeType = block.Put(std::u16string_view(codec.mimeType));
}

void PutSignatures(const Codec& codec, Block& block, ImageCodecInfo& info) {
    std::string pattern;
    for (const Signature& signature : codec.signatures) {
        pattern += signature.bytes;
    }
    info.signatureCount = static_cast<std::uint32_t>(codec.signatures.size());
    info.signatureSize = SignatureBytes(codec);
    info.signaturePattern = block.Put(pattern);
    info.signatureMask = block.Put(std::string(pattern.size(), '\xff'));
}

using MadeFile = Result<std::unique_ptr<OutputFile>>;

Status WriteImage(const Image& image, const Codec& codec, const WriteOptions& options,
                  const std::function<MadeFile()>& makeFile) {
    const auto picture = image.PictureToRead();
    if (!picture.Ok()) {
        return picture.GetStatus();
    }
    auto file = makeFile();
    if (!file.Ok()) {
        return file.GetStatus();
    }
    if (const Status status = codec.write(**picture, *image.Properties(), options, **file); status != Status::Ok) {
        return status;
    }
    return (*file)->Commit();
}

// `target` is what the caller named, and `makeFile` opens it.
Status SaveImage(GpImage* handle, const void* target, const Guid* encoder, const EncoderParameters* parameters,
                 const std::function<MadeFile()>& makeFile) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || target == nullptr || encoder == nullptr) {
            return Status::InvalidParameter;
        }
        const Codec* codec = FindEncoder(*encoder);
        if (codec == nullptr) {
            return Status::UnknownImageFormat;
        }
        const auto options = WriteOptionsOf(parameters);
        return options.Ok() ? WriteImage(*image, *codec, *options, makeFile) : options.GetStatus();
    });
}

} // namespace

FLAT_EXPORT Status FLAT_CALL GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    return Guarded([&] {
        if (count == nullptr || bytes == nullptr) {
            return Status::InvalidParameter;
        }
        *count = static_cast<std::uint32_t>(Encoders().size());
        *bytes = static_cast<std::uint32_t>(ListBytes());
        return Status::Ok;
    });
}

// `count` and `bytes` must be those of GdipGetImageEncodersSize.
FLAT_EXPORT Status FLAT_CALL GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, ImageCodecInfo* list) {
    return Guarded([&] {
        const auto encoders = Encoders();
        if (list == nullptr || count != encoders.size() || bytes != ListBytes()) {
            return Status::InvalidParameter;
        }
        Block block(reinterpret_cast<std::uint8_t*>(list), encoders.size());
        for (std::size_t i = 0; i < encoders.size(); ++i) {
            list[i] = {.clsid = encoders[i]->classId,
                       .formatId = encoders[i]->formatId,
                       .flags = BuiltInCodecFlags,
                       .version = 1};
            PutTexts(*encoders[i], block, list[i]);
        }
        for (std::size_t i = 0; i < encoders.size(); ++i) {
            PutSignatures(*encoders[i], block, list[i]);
        }
        return Status::Ok;
    });
}

// Parameters that an encoder does not know are passed over; see encoderparameters.h. The target is replaced in one
// step, or stays as it was.
FLAT_EXPORT Status FLAT_CALL GdipSaveImageToFile(GpImage* handle, const char16_t* path, const Guid* encoder,
                                                 const EncoderParameters* parameters) {
    return SaveImage(handle, path, encoder, parameters, [=] { return OutputFile::Create(path); });
}

// The picture is written from where the stream stands on; what a save that failed left there is the caller's to undo.
// The stream must not be the one that the image is read from.
FLAT_EXPORT Status FLAT_CALL GdipSaveImageToStream(GpImage* handle, Stream* stream, const Guid* encoder,
                                                   const EncoderParameters* parameters) {
    return SaveImage(handle, stream, encoder, parameters, [=] { return MadeFile(MakeOutputStream(stream)); });
}

} // namespace imaginglibrary
