// The three tables of formats: names to MIME words, the output types offered, the encoders that can be reached.
#include "imaging/formats.h"

#include "base/lettercase.h"
#include "imaging/blank.h"
#include "imaging/gdiplus/bindings.h"
#include "platform/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace lumbrix {

namespace {

constexpr std::pair<std::string_view, std::string_view> MimeWords[] = {
    {"BMP", "image/bmp"},  {"EMF", "image/x-emf"}, {"GIF", "image/gif"},   {"ICO", "image/x-icon"},
    {"JPG", "image/jpeg"}, {"JPEG", "image/jpeg"}, {"TMP", "image/jpeg"},  {"PNG", "image/png"},
    {"TIF", "image/tiff"}, {"TIFF", "image/tiff"}, {"WMF", "image/x-wmf"},
};

struct CompressionWord {
    std::string_view word;
    std::string_view mimeWord;
    std::int32_t number;
};

// The platform's numbers, and behind them those of our own imaging library.
constexpr CompressionWord CompressionWords[] = {
    {"lzw", "image/tiff", 2},        {"group4", "image/tiff", 4},     {"none", "image/tiff", 6},
    {"fast", "image/png", 0x10001},  {"small", "image/png", 0x10002}, {"deflate", "image/tiff", 0x10003},
    {"jpeg", "image/tiff", 0x10004},
};

// EncoderParameters with room for both. Points into what it was made from.
class EncoderChoices {
  public:
    explicit EncoderChoices(const Encoding& encoding) {
        Choose(EncoderQuality, encoding.quality);
        Choose(EncoderCompression, encoding.compression);
    }

    const EncoderParameters* Get() const { return reinterpret_cast<const EncoderParameters*>(&record_); }

  private:
    struct Record {
        std::uint32_t count;
        EncoderParameter items[2];
    };
    static_assert(offsetof(Record, items) == offsetof(EncoderParameters, parameter));

    void Choose(const Clsid& id, const std::optional<std::int32_t>& value) {
        if (value) {
            record_.items[record_.count++] = {id, 1, EncoderParameterValueTypeLong, &*value};
        }
    }

    Record record_{};
};

} // namespace

std::string MimeTypeForName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const std::string word = UpperCase(dot == std::string_view::npos ? name : name.substr(dot + 1));
    for (const auto& [known, mimeWord] : MimeWords) {
        if (known == word) {
            return std::string(mimeWord);
        }
    }
    return {};
}

std::string MimeWordForOutput(const std::string& source, const std::string& destination) {
    return IsBlank(source) || IsBlank(destination) ? std::string() : MimeTypeForName(destination);
}

std::string FindEncoderClsid(std::string_view mimeWord) {
    std::string clsid;
    FindEncoder(mimeWord, clsid);
    return clsid;
}

FlatStatus FindEncoder(std::string_view mimeWord, std::string& clsid) {
    const std::string wanted = UpperCase(mimeWord);
    std::uint32_t count = 0;
    std::uint32_t bytes = 0;
    const FlatStatus sizeStatus = GdipGetImageEncodersSize(&count, &bytes);
    std::vector<std::uint8_t> buffer(bytes);
    if (const FlatStatus status = GdipGetImageEncoders(count, bytes, buffer.data()); status != 0) {
        return sizeStatus != 0 ? sizeStatus : status;
    }
    for (std::size_t i = 0; i < count; ++i) {
        ImageCodecInfo record;
        std::memcpy(&record, &buffer[i * sizeof record], sizeof record);
        if (UpperCase(WideToNarrow(record.mimeType)).find(wanted) != std::string::npos) {
            clsid = ClsidToText(record.clsid);
            break;
        }
    }
    return Done;
}

std::string ClsidToText(const Clsid& clsid) {
    char text[39];
    const auto& tail = clsid.data4;
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", clsid.data1, clsid.data2,
                  clsid.data3, tail[0], tail[1], tail[2], tail[3], tail[4], tail[5], tail[6], tail[7]);
    return text;
}

Clsid ClsidFromText(const std::string& text) {
    unsigned data[11];
    const int read = std::sscanf(text.c_str(), "{%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x}", &data[0], &data[1], &data[2],
                                 &data[3], &data[4], &data[5], &data[6], &data[7], &data[8], &data[9], &data[10]);
    Clsid clsid{};
    if (read == 11) {
        clsid.data1 = data[0];
        clsid.data2 = static_cast<std::uint16_t>(data[1]);
        clsid.data3 = static_cast<std::uint16_t>(data[2]);
        std::transform(data + 3, data + 11, clsid.data4.begin(),
                       [](unsigned value) { return static_cast<std::uint8_t>(value); });
    }
    return clsid;
}

FlatStatus SaveImageFile(ImageHandle image, const std::string& name, const Clsid& encoder, const Encoding& encoding,
                         TextEncoding names) {
    const std::u16string wide = ToWide(name, names);
    return encoding.IsUsual() ? GdipSaveImageToFile(image, wide.c_str(), &encoder, nullptr)
                              : SaveImageWithParameters(image, wide.c_str(), &encoder, EncoderChoices(encoding).Get());
}

FlatStatus SaveImageStream(ImageHandle image, FlatStream* stream, const Clsid& encoder, const Encoding& encoding) {
    return encoding.IsUsual()
               ? GdipSaveImageToStream(image, stream, &encoder, nullptr)
               : SaveImageToStreamWithParameters(image, stream, &encoder, EncoderChoices(encoding).Get());
}

std::optional<std::int32_t> CompressionOf(std::string_view word, std::string_view mimeWord) {
    if (word == "default") {
        return 0;
    }
    for (const CompressionWord& known : CompressionWords) {
        if (known.word == word && known.mimeWord == mimeWord) {
            return known.number;
        }
    }
    return std::nullopt;
}

FlatStatus SaveImageFileAs(ImageHandle image, const std::string& name, std::string_view mimeWord) {
    return SaveImageFile(image, name, ClsidFromText(FindEncoderClsid(mimeWord)));
}

std::string WideToNarrow(const char16_t* text) {
    std::string narrow;
    for (; text != nullptr && (*text & 0xFF) != 0; ++text) {
        narrow.push_back(static_cast<char>(*text & 0xFF));
    }
    return narrow;
}

} // namespace lumbrix
