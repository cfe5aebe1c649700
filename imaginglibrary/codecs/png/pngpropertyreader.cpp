// The property items of PNG files as they are read.
//
// libpng walks the chunks and checks their sums. What stands in them is read here: its own questions after colours mix
// the chunks (an sRGB chunk answers for gamma and chromaticities, a profile that contradicts is lost), and it inflates
// every text, bounding the memory of each but not of all together.
#include "imaginglibrary/codecs/png/pngpropertyreader.h"

#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/png/pngproperties.h"
#include "imaginglibrary/codecs/png/pngtexts.h"
#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <iterator>
#include <new>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t WhitePointTag = 0x013E;
constexpr std::uint32_t PrimariesTag = 0x013F;
constexpr std::uint32_t UnitTag = 0x5110;
constexpr std::uint32_t HorizontalTag = 0x5111;
constexpr std::uint32_t VerticalTag = 0x5112;
constexpr std::uint32_t HistogramTag = 0x5113;

constexpr std::uint32_t FixedPoint = 100000; // what 1 is in chunks with fractions

constexpr std::string_view TextChunks[] = {"tEXt", "zTXt", "iTXt"};
constexpr std::string_view OtherChunks[] = {"gAMA", "cHRM", "sRGB", "hIST", "iCCP", "eXIf"};

template <std::size_t Count> bool Contains(const std::string_view (&names)[Count], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
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

void AddDots(const PngStream::DotsPerUnit& dots, PropertyList& properties) {
    properties.Add({UnitTag, PropertyType::Byte, {dots.unit}});
    properties.Add(LongProperty(HorizontalTag, dots.horizontal));
    properties.Add(LongProperty(VerticalTag, dots.vertical));
}

} // namespace

void PngPropertyReader::ReadChunk(std::string_view name, std::span<const std::uint8_t> content) noexcept {
    if (chunksRead_ >= MaximumMetadataEntries) {
        return;
    }
    ++chunksRead_;
    try {
        KeepChunk(name, content);
    } catch (...) { // which must not travel through the C library
        lacksMemory_ = true;
    }
}

void PngPropertyReader::KeepChunk(std::string_view name, std::span<const std::uint8_t> content) {
    const bool isText = Contains(TextChunks, name);
    if ((!isText && !Contains(OtherChunks, name)) || content.size() > bytesLeft_) {
        return;
    }
    bytesLeft_ -= content.size();
    if (isText) {
        AddText(name, {reinterpret_cast<const char*>(content.data()), content.size()});
    } else {
        chunks_.try_emplace(std::string(name), content.begin(), content.end());
    }
}

PropertyList PngPropertyReader::MakeProperties(const std::optional<PngStream::DotsPerUnit>& dots) {
    if (lacksMemory_) {
        throw std::bad_alloc();
    }
    AddColors();
    if (dots) {
        AddDots(*dots, properties_);
    }
    AddHistogram();
    AddColorProfile();
    const auto exif = ContentOf("eXIf");
    for (Property& item : ReadExif(exif, ExifThumbnail::PassOver, properties_)) {
        properties_.Add(std::move(item));
    }
    if (!exif.empty()) {
        properties_.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(exif.begin(), exif.end()));
    }
    if (!packet_.empty() && packet_.size() <= MaximumCarriedBytes) {
        properties_.Set(XmpProperty(packet_));
    }
    return std::move(properties_);
}

void PngPropertyReader::AddText(std::string_view name, std::string_view content) {
    const auto keyword = TakeString(content);
    if (keyword == PngXmpKeyword && name == "iTXt" && packet_.empty()) {
        packet_ = InternationalText(content).value_or(std::string());
        return;
    }
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
std::optional<std::string> PngPropertyReader::InflatedText(std::string_view content) {
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
std::optional<std::string> PngPropertyReader::InternationalText(std::string_view content) {
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

std::span<const std::uint8_t> PngPropertyReader::ContentOf(const char* name) const {
    const auto found = chunks_.find(name);
    return found == chunks_.end() ? std::span<const std::uint8_t>() : found->second;
}

void PngPropertyReader::AddColors() {
    if (const auto gamma = ContentOf("gAMA"); gamma.size() == 4 && BigEndian32(gamma.data()) != 0) {
        const std::uint32_t fraction[] = {FixedPoint, BigEndian32(gamma.data())};
        properties_.Add(NumbersProperty(PngGammaTag, PropertyType::Rational, fraction));
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
        properties_.Add({PngRenderingIntentTag, PropertyType::Byte, {intent[0]}});
    }
}

void PngPropertyReader::AddHistogram() {
    const auto counts = ContentOf("hIST");
    constexpr std::size_t MostBytes = 2 * 256;
    if (!counts.empty() && counts.size() % 2 == 0 && counts.size() <= MostBytes) {
        Property histogram{HistogramTag, PropertyType::Short, {counts.begin(), counts.end()}};
        SwapUnlessNative(histogram.value, histogram.type, std::endian::big);
        properties_.Add(std::move(histogram));
    }
}

void PngPropertyReader::AddColorProfile() {
    const auto bytes = ContentOf("iCCP");
    std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto profile = TakeString(content) ? InflatedText(content) : std::nullopt;
    if (profile && !profile->empty()) {
        properties_.Add({ColorProfileTag, PropertyType::Byte, {profile->begin(), profile->end()}});
    }
}

} // namespace imaginglibrary
