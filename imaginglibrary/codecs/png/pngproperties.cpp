// The property items of PNG files as they are written.
#include "imaginglibrary/codecs/png/pngproperties.h"

#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/png/pngtexts.h"
#include "imaginglibrary/core/limits.h"

namespace imaginglibrary {

namespace {

// Texts and EXIF share what a reader allows for metadata.
constexpr std::size_t MostWrittenBytes = MaximumMetadataBytes / 2;

} // namespace

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
        const bool isWritersOwn = item.tag == PngGammaTag || item.tag == PngRenderingIntentTag || item.tag == XmpTag;
        if (isWritersOwn || IsTextComment(item)) {
            continue;
        }
        all.Add(item);
        if (keyword == nullptr) {
            others.Add(item);
        }
    }
    if (const auto packet = XmpOf(properties); !packet.empty()) {
        metadata.texts.push_back({PngXmpKeyword, std::string(packet), true});
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
