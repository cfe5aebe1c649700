// What files tell in other forms than EXIF: XMP packets, image resources, colour profiles. The first byte says which.
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "imaginglibrary/codecs/metadata/colorprofile.h"
#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/metadata/xmporientation.h"

namespace {

using namespace imaginglibrary;

void TakeOrientationOut(const std::string& packet) {
    const std::string without = WithoutOrientation(packet);
    fuzz::Require(without.size() == packet.size(), "a packet keeps its length");
    for (std::size_t i = 0; i < packet.size(); ++i) {
        fuzz::Require(without[i] == packet[i] || without[i] == ' ', "only blanks are put in");
    }
    fuzz::Require(WithoutOrientation(without) == without, "nothing is left to be taken out");
}

// A packet that could be read is read again from what a JPEG and a GIF file hold of it.
void CarryPacket(const std::string& packet) {
    PropertyList items;
    items.Set(XmpProperty(packet));
    const std::string carried(XmpOf(items));
    if (carried.empty()) {
        return;
    }
    const auto segments = MakeJpegXmp(carried);
    JpegXmpReader reader;
    for (const std::string& segment : segments) {
        fuzz::Require(segment.size() <= 65533, "a segment fits its marker");
        reader.Add(segment);
    }
    if (segments.size() == 1) {
        fuzz::Require(reader.Packet() == carried, "a packet comes back from a JPEG file");
    }
    PacketOfGif(GifContentOf(carried));
}

// Segments as a file may have them: each begins with its length.
void ReadSegments(fuzz::Choices& choices) {
    std::vector<std::string> segments;
    while (!choices.AtEnd()) {
        segments.push_back(choices.Bytes(choices.Of<std::uint16_t>()));
    }
    JpegXmpReader reader;
    for (const std::string& segment : segments) {
        reader.Add(segment);
    }
    reader.Packet();
}

void CarryResources(const std::string& resources) {
    PropertyList items;
    AddResources(resources, items);
    const std::string written = ResourcesFor(items);
    PropertyList again;
    AddResources(written, again);
    fuzz::Require(ResourcesFor(again) == written, "resources stay as they were written");
    FitToPicture(items, 5, 7);
}

void ReadProfile(const std::string& bytes) {
    PropertyList items;
    items.Set({ColorProfileTag, PropertyType::Undefined, {bytes.begin(), bytes.end()}});
    fuzz::Require(RgbProfileOf(items).empty() || GreyProfileOf(items).empty(), "a profile is of one kind of colours");
    RemoveMetadata(items, ProfileFate::Kept);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    fuzz::Choices choices(bytes, count);
    switch (choices.Below(6)) {
    case 0:
        TakeOrientationOut(choices.Rest());
        break;
    case 1:
        CarryPacket(choices.Rest());
        break;
    case 2:
        ReadSegments(choices);
        break;
    case 3:
        CarryResources(choices.Rest());
        break;
    case 4:
        PacketOfGif(choices.Rest());
        break;
    default:
        ReadProfile(choices.Rest());
        break;
    }
    return 0;
}
