// The property items of PNG files as they are written.
#include "imaginglibrary/codecs/png/pngproperties.h"

#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/png/pngtexts.h"
#include "imaginglibrary/core/limits.h"

#include <span>
#include <utility>

namespace imaginglibrary {

namespace {

// Texts and EXIF share what a reader allows for metadata.
constexpr std::size_t MostWrittenBytes = MaximumMetadataBytes / 2;

bool IsWritersOwn(const Property& item) {
    return item.tag == PngGammaTag || item.tag == PngRenderingIntentTag || item.tag == XmpTag;
}

// Empty where texts say it all.
std::vector<std::uint8_t> MakeExif(const PropertyList& properties, std::span<const Property> others,
                                   std::span<const Property> texts) {
    if (const auto edited = EditedExif(properties, others, texts);
        edited && edited->Block().size() <= MostWrittenBytes) {
        return edited->Block();
    }
    ExifBlock block;
    for (const Property& item : others) {
        block.Add(item);
    }
    block.DropThumbnail();
    if (block.IsEmpty()) {
        return {};
    }
    for (const Property& item : texts) {
        block.Add(item);
    }
    block.Shorten(MostWrittenBytes);
    return block.MakeBlock();
}

} // namespace

PngMetadata MakePngMetadata(const PropertyList& properties) {
    PngMetadata metadata;
    std::vector<Property> others;
    std::vector<Property> texts;
    for (const Property& item : properties.Items()) {
        const char* keyword = KeywordOf(item);
        const std::string_view text = keyword == nullptr ? std::string_view() : TextOf(item);
        if (!text.empty() && text.size() <= MostWrittenBytes) {
            metadata.texts.push_back({keyword, std::string(text), NeedsUtf8(text)});
        }
        if (!IsWritersOwn(item) && !IsTextComment(item)) {
            (keyword == nullptr ? others : texts).push_back(item);
        }
    }
    if (const auto packet = XmpOf(properties); !packet.empty()) {
        metadata.texts.push_back({PngXmpKeyword, std::string(packet), true});
    }
    metadata.exif = MakeExif(properties, others, texts);
    return metadata;
}

} // namespace imaginglibrary
