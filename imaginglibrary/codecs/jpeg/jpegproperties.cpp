// The property items of JPEG files, as they are read and as they are written.
#include "imaginglibrary/codecs/jpeg/jpegproperties.h"

#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/codecs/metadata/xmp.h"

#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t LuminanceTableTag = 0x5090;
constexpr std::uint32_t ChrominanceTableTag = 0x5091;
constexpr int ExifMarker = JPEG_APP0 + 1;
constexpr std::size_t MostMarkerBytes = 65533; // its length counts itself
constexpr std::string_view ExifName = "Exif\0\0"sv;
constexpr int ResourcesMarker = JPEG_APP0 + 13;
constexpr std::string_view ResourcesName = "Photoshop 3.0\0"sv;

std::string_view ContentOf(const jpeg_marker_struct& marker) {
    return {reinterpret_cast<const char*>(marker.data), marker.data_length};
}

std::span<const std::uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The content of the first marker of this kind that begins with the name, behind it.
std::string_view FindMarker(const jpeg_decompress_struct& header, int kind, std::string_view name) {
    for (const jpeg_marker_struct* marker = header.marker_list; marker != nullptr; marker = marker->next) {
        const std::string_view content = ContentOf(*marker);
        if (marker->marker == kind && content.starts_with(name)) {
            return content.substr(name.size());
        }
    }
    return {};
}

// XMP, the IPTC data and the image resources, which a file may have in several segments.
void AddPackets(const jpeg_decompress_struct& header, PropertyList& properties) {
    JpegXmpReader xmp;
    std::string resources;
    for (const jpeg_marker_struct* marker = header.marker_list; marker != nullptr; marker = marker->next) {
        const std::string_view content = ContentOf(*marker);
        if (marker->marker == ExifMarker) {
            xmp.Add(content);
        } else if (marker->marker == ResourcesMarker && content.starts_with(ResourcesName) &&
                   resources.size() + content.size() - ResourcesName.size() <= MaximumCarriedBytes) {
            resources += content.substr(ResourcesName.size());
        }
    }
    if (const std::string packet = xmp.Packet(); !packet.empty()) {
        properties.Set(XmpProperty(packet));
    }
    AddResources(resources, properties);
}

// Null where there is none; libjpeg checks a table's number only when it needs the table.
const JQUANT_TBL* QuantisationOf(const jpeg_decompress_struct& header, int component) {
    if (component >= header.num_components) {
        return nullptr;
    }
    const int number = header.comp_info[component].quant_tbl_no;
    return number >= 0 && number < NUM_QUANT_TBLS ? header.quant_tbl_ptrs[number] : nullptr;
}

void AddQuantisation(const jpeg_decompress_struct& header, int component, std::uint32_t tag, PropertyList& properties) {
    const JQUANT_TBL* table = QuantisationOf(header, component);
    if (table == nullptr) {
        return;
    }
    Property property{tag, PropertyType::Short, std::vector<std::uint8_t>(sizeof table->quantval)};
    std::memcpy(property.value.data(), table->quantval, sizeof table->quantval);
    properties.Add(std::move(property));
}

} // namespace

PropertyList ReadJpegProperties(const jpeg_decompress_struct& header, std::vector<std::uint8_t> colorProfile) {
    PropertyList properties;
    const auto exif = BytesOf(FindMarker(header, ExifMarker, ExifName));
    auto behindOthers = ReadExif(exif, ExifThumbnail::Keep, properties);
    if (!exif.empty()) {
        properties.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(exif.begin(), exif.end()));
    }
    if (const std::string_view comment = FindMarker(header, JPEG_COM, {}); !comment.empty()) {
        if (properties.Find(CommentTag) == nullptr) {
            properties.Add(AsciiProperty(CommentTag, comment));
        } else {
            behindOthers.push_back(AsciiProperty(CommentTag + BesideTags, comment));
        }
    }
    if (!colorProfile.empty()) {
        properties.Add({ColorProfileTag, PropertyType::Byte, std::move(colorProfile)});
    }
    AddQuantisation(header, 1, ChrominanceTableTag, properties);
    AddQuantisation(header, 0, LuminanceTableTag, properties);
    for (Property& item : behindOthers) {
        properties.Add(std::move(item));
    }
    AddPackets(header, properties);
    return properties;
}

namespace {

bool IsPacket(const Property& item) { return item.tag == XmpTag || item.tag == IptcTag || item.tag == ResourcesTag; }

void AddMarker(int kind, std::string_view content, std::vector<JpegMarker>& markers) {
    markers.push_back({kind, {content.begin(), content.end()}});
}

void AddResourceMarkers(const PropertyList& properties, std::vector<JpegMarker>& markers) {
    constexpr std::size_t MostBytes = MostMarkerBytes - ResourcesName.size();
    const std::string resources = ResourcesFor(properties);
    for (std::size_t at = 0; at < resources.size(); at += MostBytes) {
        AddMarker(ResourcesMarker, std::string(ResourcesName) + resources.substr(at, MostBytes), markers);
    }
}

// Empty where there is nothing to write.
std::vector<std::uint8_t> MakeExif(const PropertyList& properties) {
    constexpr std::size_t MostBytes = MostMarkerBytes - ExifName.size();
    std::vector<Property> items;
    std::ranges::copy_if(properties.Items(), std::back_inserter(items),
                         [](const Property& item) { return !IsTextComment(item) && !IsPacket(item); });
    if (const auto edited = EditedExif(properties, items); edited && edited->Block().size() <= MostBytes) {
        return edited->Block();
    }
    ExifBlock block;
    for (Property& item : items) {
        block.Add(std::move(item));
    }
    block.Shorten(MostBytes);
    return block.MakeBlock();
}

} // namespace

std::vector<JpegMarker> MakeJpegMarkers(const PropertyList& properties) {
    std::vector<JpegMarker> markers;
    if (const auto bytes = MakeExif(properties); !bytes.empty()) {
        AddMarker(ExifMarker, ExifName, markers);
        auto& content = markers.back().content;
        content.insert(content.end(), bytes.begin(), bytes.end());
    }
    for (const std::string& segment : MakeJpegXmp(XmpOf(properties))) {
        AddMarker(ExifMarker, segment, markers);
    }
    AddResourceMarkers(properties, markers);
    if (const auto text = TextCommentOf(properties).substr(0, MostMarkerBytes); !text.empty()) {
        AddMarker(JPEG_COM, text, markers);
    }
    return markers;
}

} // namespace imaginglibrary
