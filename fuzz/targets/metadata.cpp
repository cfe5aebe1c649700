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
}

// A packet that is well formed, and what it becomes without its orientations, written side by side.
class OrientedPacket {
  public:
    explicit OrientedPacket(fuzz::Choices& choices) : choices_(choices) {
        for (std::size_t left = choices_.Below(3) + 1; left > 0; --left) {
            prefixes_.push_back(std::string(choices_.Below(80) + 1, static_cast<char>('a' + left)));
        }
        Put("<rdf:RDF");
        for (const std::string& prefix : prefixes_) {
            Put(" xmlns:" + prefix + (choices_.Coin() ? "=" : " = ") + Quoted("http://ns.adobe.com/tiff/1.0/"));
        }
        Put(">");
        while (!choices_.AtEnd()) {
            PutDescription();
        }
        Put("</rdf:RDF>");
    }

    void Check() const {
        fuzz::Require(WithoutOrientation(given_) == expected_, "orientations become blanks, all else stays");
    }

  private:
    void Put(const std::string& text) {
        given_ += text;
        expected_ += text;
    }

    void PutOrientation(const std::string& text) {
        given_ += text;
        expected_.append(text.size(), ' ');
    }

    // What stands between the quotes of an attribute, in an element or in a comment.
    std::string Text() {
        std::string text = choices_.Bytes(choices_.Byte() % 48);
        std::erase_if(text, [](char c) { return c == '<' || c == '&' || c == '"' || c == '\'' || c == '-'; });
        return text;
    }

    std::string Quoted(const std::string& text) {
        const char quote = choices_.Coin() ? '"' : '\'';
        return quote + text + quote;
    }

    std::string Name() { return prefixes_[choices_.Below(prefixes_.size())] + ":Orientation"; }

    void PutDescription() {
        Put("<rdf:Description");
        for (std::size_t attributes = choices_.Below(4); attributes > 0; --attributes) {
            Put(" ");
            const std::string value = Quoted(Text());
            choices_.Coin() ? PutOrientation(Name() + "=" + value) : Put("z:Orientation=" + value);
        }
        Put(">");
        for (std::size_t elements = choices_.Below(4); elements > 0; --elements) {
            PutElement(Name(), Text());
        }
        Put("</rdf:Description>");
    }

    void PutElement(const std::string& name, const std::string& text) {
        switch (choices_.Below(7)) {
        case 0:
            PutOrientation("<" + name + ">" + text + "</" + name + ">");
            break;
        case 1:
            PutOrientation("<" + name + " rdf:value=" + Quoted(text) + "/>");
            break;
        case 2:
            Put("<!-- <" + name + ">" + text + "</" + name + "> -->");
            break;
        case 3:
            Put("<![CDATA[ <" + name + "> ]]>");
            break;
        case 4:
            Put("<z:Orientation>" + text + "</z:Orientation>");
            break;
        case 5:
            Put("<" + name + "s>" + text + "</" + name + "s>");
            break;
        default:
            Put(text);
            break;
        }
    }

    fuzz::Choices& choices_;
    std::vector<std::string> prefixes_;
    std::string given_;
    std::string expected_;
};

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

// One that fills several segments: what it describes comes back as a whole.
void CarryLargePacket(fuzz::Choices& choices) {
    constexpr std::size_t MostRepetitions = 64;
    const std::size_t repetitions = choices.Below(MostRepetitions) + 1;
    const std::string text = choices.Rest();
    std::string descriptions;
    for (std::size_t i = 0; i < repetitions; ++i) {
        descriptions += text;
    }
    PropertyList items;
    items.Set(XmpProperty("<rdf:RDF>" + descriptions + "</rdf:RDF>"));
    const auto segments = MakeJpegXmp(XmpOf(items));
    JpegXmpReader reader;
    for (auto segment = segments.rbegin(); segment != segments.rend(); ++segment) { // in any order
        reader.Add(*segment);
    }
    fuzz::Require(segments.empty() || reader.Packet().find(descriptions) != std::string::npos,
                  "a large packet comes back from a JPEG file");
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

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    fuzz::Choices choices(bytes, count);
    switch (choices.Below(8)) {
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
    case 5:
        ReadProfile(choices.Rest());
        break;
    case 6:
        OrientedPacket(choices).Check();
        break;
    default:
        CarryLargePacket(choices);
        break;
    }
}
