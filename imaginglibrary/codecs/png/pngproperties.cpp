// The property items of PNG files, as they are read and as they are written.
#include "imaginglibrary/codecs/png/pngproperties.h"

#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/png/pngtexts.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <optional>
#include <span>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t GammaTag = 0x0301;
constexpr std::uint32_t RenderingIntentTag = 0x0303;
constexpr std::uint32_t WhitePointTag = 0x013E;
constexpr std::uint32_t PrimariesTag = 0x013F;
constexpr std::uint32_t UnitTag = 0x5110;
constexpr std::uint32_t HorizontalTag = 0x5111;
constexpr std::uint32_t VerticalTag = 0x5112;
constexpr std::uint32_t HistogramTag = 0x5113;

constexpr std::uint32_t FixedPoint = 100000; // what 1 is in chunks with fractions
constexpr std::size_t SignatureBytes = 8;
constexpr std::size_t NameBytes = 4;
constexpr std::size_t ChunkHeadBytes = 8;
constexpr std::size_t ChecksumBytes = 4;
constexpr std::uint32_t MostChunkBytes = 0x7FFFFFFF;

// Texts and EXIF share what a reader allows for metadata.
constexpr std::size_t MostWrittenBytes = MaximumMetadataBytes / 2;

std::string_view CharactersOf(const std::vector<std::uint8_t>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Takes what stands before the next NUL off a chunk's content, and the NUL. Nothing where there is none.
std::optional<std::string_view> TakeString(std::string_view& content) {
    const std::size_t end = content.find('\0');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view taken = content.substr(0, end);
    content.remove_prefix(end + 1);
    return taken;
}

Property NumbersProperty(std::uint32_t tag, PropertyType type, std::span<const std::uint32_t> numbers) {
    Property property{tag, type, std::vector<std::uint8_t>(numbers.size_bytes())};
    std::memcpy(property.value.data(), numbers.data(), numbers.size_bytes());
    return property;
}

class PngPropertyReader {
  public:
    explicit PngPropertyReader(const InputFile& file) : file_(file) {}

    PropertyList Read() {
        ReadChunks();
        AddColors();
        AddDotsPerUnit();
        AddHistogram();
        AddColorProfile();
        ReadExif(ContentOf("eXIf"), ExifThumbnail::PassOver, properties_);
        return std::move(properties_);
    }

  private:
    void ReadChunks() {
        std::uint64_t at = SignatureBytes;
        std::array<std::uint8_t, ChunkHeadBytes> head;
        for (std::size_t count = 0; count < MaximumMetadataEntries; ++count) {
            if (file_.ReadExactlyAt(at, head.data(), head.size()) != Status::Ok) {
                return;
            }
            const std::uint32_t length = BigEndian32(head.data());
            const std::string name(head.begin() + NameBytes, head.end());
            if (length > MostChunkBytes || name == "IDAT" || name == "IEND") {
                return;
            }
            ReadChunk(name, at + NameBytes, length);
            at += ChunkHeadBytes + length + ChecksumBytes;
        }
    }

    // `start` is that of the name.
    void ReadChunk(const std::string& name, std::uint64_t start, std::size_t length) {
        constexpr std::string_view Texts[] = {"tEXt", "zTXt", "iTXt"};
        constexpr std::string_view Others[] = {"gAMA", "cHRM", "sRGB", "pHYs", "hIST", "iCCP", "eXIf"};
        const bool isText = std::find(std::begin(Texts), std::end(Texts), name) != std::end(Texts);
        const bool isOther = std::find(std::begin(Others), std::end(Others), name) != std::end(Others);
        if ((!isText && !isOther) || !Take(length)) {
            return;
        }
        auto content = ReadContent(start, length);
        if (!content) {
            return;
        }
        if (isText) {
            AddText(name, CharactersOf(*content));
        } else {
            chunks_.emplace(name, std::move(*content));
        }
    }

    // Whether that much may still be read.
    bool Take(std::size_t bytes) {
        if (bytes > bytesLeft_) {
            return false;
        }
        bytesLeft_ -= bytes;
        return true;
    }

    // Nothing where the checksum is wrong.
    std::optional<std::vector<std::uint8_t>> ReadContent(std::uint64_t start, std::size_t length) const {
        if (start + NameBytes + length + ChecksumBytes > file_.Size()) {
            return std::nullopt;
        }
        std::vector<std::uint8_t> bytes(NameBytes + length + ChecksumBytes);
        if (file_.ReadExactlyAt(start, bytes.data(), bytes.size()) != Status::Ok) {
            return std::nullopt;
        }
        const std::uint32_t checksum = BigEndian32(&bytes[NameBytes + length]);
        bytes.resize(NameBytes + length);
        if (crc32(0, bytes.data(), static_cast<uInt>(bytes.size())) != checksum) {
            return std::nullopt;
        }
        bytes.erase(bytes.begin(), bytes.begin() + NameBytes);
        return bytes;
    }

    void AddText(std::string_view name, std::string_view content) {
        const auto keyword = TakeString(content);
        const auto tag = keyword ? TagOfKeyword(*keyword) : std::nullopt;
        if (!tag || properties_.Find(*tag) != nullptr) {
            return;
        }
        const auto text = name == "tEXt"   ? std::optional<std::string>(content)
                          : name == "zTXt" ? InflatedText(content)
                                           : InternationalText(content);
        if (text) {
            properties_.Add(AsciiProperty(*tag, *text));
        }
    }

    // `content` begins with the method, of which there is one.
    std::optional<std::string> InflatedText(std::string_view content) {
        if (content.empty() || content.front() != 0) {
            return std::nullopt;
        }
        if (bytesInVain_ > MaximumMetadataBytes) {
            return std::nullopt; // many chunks could make us work in vain again and again
        }
        std::size_t made = 0;
        auto text = Inflated(content.substr(1), bytesLeft_, made);
        if (text) {
            bytesLeft_ -= made;
        } else {
            bytesInVain_ += made;
        }
        return text;
    }

    // `content` begins with whether it is compressed; the method, a language and a translated keyword follow.
    std::optional<std::string> InternationalText(std::string_view content) {
        if (content.size() < 2) {
            return std::nullopt;
        }
        const bool isCompressed = content[0] != 0;
        const std::string method(1, content[1]);
        content.remove_prefix(2);
        if (!TakeString(content) || !TakeString(content)) {
            return std::nullopt;
        }
        return isCompressed ? InflatedText(method + std::string(content)) : std::optional<std::string>(content);
    }

    std::span<const std::uint8_t> ContentOf(const char* name) const {
        const auto found = chunks_.find(name);
        return found == chunks_.end() ? std::span<const std::uint8_t>() : found->second;
    }

    void AddColors() {
        if (const auto gamma = ContentOf("gAMA"); gamma.size() == 4 && BigEndian32(gamma.data()) != 0) {
            const std::uint32_t fraction[] = {FixedPoint, BigEndian32(gamma.data())};
            properties_.Add(NumbersProperty(GammaTag, PropertyType::Rational, fraction));
        }
        if (const auto points = ContentOf("cHRM"); points.size() == 32) {
            std::array<std::uint32_t, 16> fractions;
            for (std::size_t i = 0; i < fractions.size(); i += 2) {
                fractions[i] = BigEndian32(&points[2 * i]);
                fractions[i + 1] = FixedPoint;
            }
            const std::span<const std::uint32_t> all(fractions);
            properties_.Add(NumbersProperty(WhitePointTag, PropertyType::Rational, all.first(4)));
            properties_.Add(NumbersProperty(PrimariesTag, PropertyType::Rational, all.subspan(4)));
        }
        if (const auto intent = ContentOf("sRGB"); intent.size() == 1) {
            properties_.Add({RenderingIntentTag, PropertyType::Byte, {intent[0]}});
        }
    }

    void AddDotsPerUnit() {
        if (const auto dots = ContentOf("pHYs"); dots.size() == 9) {
            properties_.Add({UnitTag, PropertyType::Byte, {dots[8]}});
            properties_.Add(LongProperty(HorizontalTag, BigEndian32(&dots[0])));
            properties_.Add(LongProperty(VerticalTag, BigEndian32(&dots[4])));
        }
    }

    void AddHistogram() {
        const auto counts = ContentOf("hIST");
        constexpr std::size_t MostBytes = 2 * 256;
        if (!counts.empty() && counts.size() % 2 == 0 && counts.size() <= MostBytes) {
            Property histogram{HistogramTag, PropertyType::Short, {counts.begin(), counts.end()}};
            SwapUnlessNative(histogram.value, histogram.type, std::endian::big);
            properties_.Add(std::move(histogram));
        }
    }

    void AddColorProfile() {
        const auto bytes = ContentOf("iCCP");
        std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        const auto profile = TakeString(content) ? InflatedText(content) : std::nullopt;
        if (profile && !profile->empty()) {
            properties_.Add({ColorProfileTag, PropertyType::Byte, {profile->begin(), profile->end()}});
        }
    }

    const InputFile& file_;
    PropertyList properties_;
    std::map<std::string, std::vector<std::uint8_t>> chunks_; // the first of each name, texts left aside
    std::size_t bytesLeft_ = MaximumMetadataBytes;
    std::size_t bytesInVain_ = 0; // inflated, and then too long or broken
};

} // namespace

PropertyList ReadPngProperties(const InputFile& file) { return PngPropertyReader(file).Read(); }

PngMetadata MakePngMetadata(const PropertyList& properties) {
    PngMetadata metadata;
    ExifBlock others;
    ExifBlock all;
    for (const Property& item : properties.Items()) {
        const char* keyword = KeywordOf(item);
        const std::string_view text = keyword == nullptr ? std::string_view() : TextOf(item);
        if (!text.empty() && text.size() <= MostWrittenBytes) {
            metadata.texts.push_back({keyword, std::string(text), NeedsUtf8(text)});
        }
        const bool isWritersOwn = item.tag == GammaTag || item.tag == RenderingIntentTag;
        if (isWritersOwn || IsTextComment(item)) {
            continue;
        }
        all.Add(item);
        if (keyword == nullptr) {
            others.Add(item);
        }
    }
    others.DropThumbnail();
    all.DropThumbnail();
    all.Shorten(MostWrittenBytes);
    if (!others.IsEmpty()) {
        metadata.exif = all.MakeBlock();
    }
    return metadata;
}

} // namespace imaginglibrary
