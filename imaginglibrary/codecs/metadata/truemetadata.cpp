// Metadata that tell of the picture itself, kept true when it becomes another one.
#include "imaginglibrary/codecs/metadata/truemetadata.h"

#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/metadata/xmporientation.h"

namespace imaginglibrary {

namespace {

// Of the main, the EXIF and the interoperability directory.
constexpr std::uint32_t WidthTags[] = {0x0100, 0xA002, 0x1001};
constexpr std::uint32_t HeightTags[] = {0x0101, 0xA003, 0x1002};

// A side that was a short number stays one as long as it is short enough.
void SetSide(PropertyList& properties, std::uint32_t tag, std::uint32_t side) {
    const Property* item = properties.Find(tag);
    if (item == nullptr) {
        return;
    }
    const bool isShort = item->type == PropertyType::Short && side <= 0xFFFF;
    properties.Set(isShort ? ShortProperty(tag, static_cast<std::uint16_t>(side)) : LongProperty(tag, side));
}

constexpr std::uint32_t OrientationTag = 0x0112;

// Lets `change` change the EXIF block that items were read from. One that is not whole goes, and so does one without
// anything in it: then a block is made of the items alone.
template <class Change> void ChangeSourceExif(PropertyList& properties, Change change) {
    if (properties.SourceExif() == nullptr) {
        return;
    }
    auto exif = ExifEditor::Open(*properties.SourceExif());
    if (exif) {
        change(*exif);
    }
    const bool stays = exif && !exif->MainEntries().empty();
    properties.SetSourceExif(stays ? std::make_shared<const std::vector<std::uint8_t>>(exif->Block()) : nullptr);
}

void DropThumbnail(PropertyList& properties) {
    properties.RemoveIf([](const Property& item) { return PlaceOf(item) == ExifPlace::Thumbnail; });
    ChangeSourceExif(properties, [](ExifEditor& exif) { exif.DropThumbnail(); });
}

} // namespace

void FitToPicture(PropertyList& properties, std::uint32_t width, std::uint32_t height) {
    for (const std::uint32_t tag : WidthTags) {
        SetSide(properties, tag, width);
    }
    for (const std::uint32_t tag : HeightTags) {
        SetSide(properties, tag, height);
    }
    DropThumbnail(properties);
    RemoveThumbnailResources(properties);
}

void RemoveOrientation(PropertyList& properties) {
    properties.RemoveIf([](const Property& item) { return item.tag == OrientationTag; });
    ChangeSourceExif(properties, [](ExifEditor& exif) { exif.Remove(OrientationTag); });
    if (const std::string_view packet = XmpOf(properties); !packet.empty()) {
        properties.Set(XmpProperty(WithoutOrientation(packet)));
    }
}

void RemoveMetadata(PropertyList& properties, ProfileFate profile) {
    properties.RemoveIf(
        [=](const Property& item) { return profile == ProfileFate::Removed || item.tag != ColorProfileTag; });
    properties.SetSourceExif(nullptr);
}

} // namespace imaginglibrary
