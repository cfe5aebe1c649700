// XMP packets: how JPEG segments and GIF blocks hold them.
#include "imaginglibrary/codecs/metadata/xmp.h"

#include "imaginglibrary/codecs/metadata/md5.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <array>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view PacketName = "http://ns.adobe.com/xap/1.0/\0"sv;
constexpr std::string_view PartName = "http://ns.adobe.com/xmp/extension/\0"sv;
constexpr std::size_t MostSegmentBytes = 65533; // its length counts itself
constexpr std::size_t DigestBytes = 32;         // as hexadecimal digits
constexpr std::size_t PartHeadBytes = DigestBytes + 8;
constexpr std::size_t MostPartBytes = 65400;
constexpr std::string_view DigestProperty = "xmpNote:HasExtendedXMP";

const std::uint8_t* BytesAt(std::string_view text, std::size_t at) {
    return reinterpret_cast<const std::uint8_t*>(text.data()) + at;
}

// Where the value of the property that names the parts stands, as an attribute or as an element; what stands around it
// is `start` to `end`.
struct Digest {
    std::size_t start = std::string_view::npos;
    std::size_t end = 0;
    std::string_view value;
};

Digest FindDigest(std::string_view packet) {
    const std::size_t at = packet.find(DigestProperty);
    if (at == std::string_view::npos || at == 0) {
        return {};
    }
    const bool isElement = packet[at - 1] == '<';
    std::size_t from = at + DigestProperty.size();
    if (!isElement) {
        from = packet.find_first_of("\"'", from);
    } else {
        from = packet.find('>', from);
    }
    if (from == std::string_view::npos || packet.size() - from < DigestBytes + 2) {
        return {};
    }
    const std::string_view value = packet.substr(from + 1, DigestBytes);
    const std::size_t behind = from + 1 + DigestBytes;
    if (!isElement) {
        return packet[behind] == packet[from] ? Digest{at, behind + 1, value} : Digest{};
    }
    const std::size_t end = packet.find('>', behind);
    return packet[behind] == '<' && end != std::string_view::npos ? Digest{at - 1, end + 1, value} : Digest{};
}

// What stands in the element of a packet that holds all descriptions.
std::string_view DescriptionsOf(std::string_view packet) {
    const std::size_t tag = packet.find("<rdf:RDF");
    const std::size_t start = packet.find('>', tag);
    const std::size_t end = packet.rfind("</rdf:RDF>");
    if (tag == std::string_view::npos || end == std::string_view::npos || start >= end) {
        return {};
    }
    return packet.substr(start + 1, end - start - 1);
}

// A packet that says only where the rest is.
std::string PacketFor(std::string_view digest) {
    return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
           "<rdf:Description rdf:about=\"\" xmlns:xmpNote=\"http://ns.adobe.com/xmp/note/\" xmpNote:HasExtendedXMP=\"" +
           std::string(digest) + "\"/></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>";
}

std::string BigEndianText(std::size_t number) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text.push_back(static_cast<char>(number >> shift));
    }
    return text;
}

// 1, then every number from 255 down to 0: from wherever a reader of blocks comes in, it leads to the end.
std::string GifTrailer() {
    std::string trailer(1, '\1');
    for (int number = 255; number >= 0; --number) {
        trailer.push_back(static_cast<char>(number));
    }
    return trailer;
}

} // namespace

Property XmpProperty(std::string_view packet) { return {XmpTag, PropertyType::Byte, {packet.begin(), packet.end()}}; }

std::string_view XmpOf(const PropertyList& properties) {
    const Property* item = properties.Find(XmpTag);
    if (item == nullptr || (item->type != PropertyType::Byte && item->type != PropertyType::Undefined &&
                            item->type != PropertyType::Ascii)) {
        return {};
    }
    std::string_view packet(reinterpret_cast<const char*>(item->value.data()), item->value.size());
    packet = packet.substr(0, packet.find_last_not_of('\0') + 1);
    const bool isText = packet.find('\0') == std::string_view::npos;
    return isText && packet.size() <= MaximumCarriedBytes ? packet : std::string_view();
}

void JpegXmpReader::Add(std::string_view content) {
    if (content.starts_with(PacketName) && packet_.empty()) {
        packet_ = content.substr(PacketName.size());
    } else if (content.starts_with(PartName) && content.size() > PartName.size() + PartHeadBytes) {
        parts_.push_back(content.substr(PartName.size()));
    }
}

std::string JpegXmpReader::Packet() const {
    const Digest digest = FindDigest(packet_);
    const std::size_t end = packet_.rfind("</rdf:RDF>");
    if (digest.start == std::string_view::npos || end == std::string_view::npos || end < digest.end) {
        return std::string(packet_);
    }
    const std::string extended = ExtendedPacket(digest.value);
    const std::string_view descriptions = DescriptionsOf(extended);
    if (descriptions.empty()) {
        return std::string(packet_);
    }
    std::string packet(packet_.substr(0, digest.start));
    packet += packet_.substr(digest.end, end - digest.end);
    packet += descriptions;
    return packet += packet_.substr(end);
}

// The parts in the order of their places, which must follow one another from the first byte to the last.
std::string JpegXmpReader::ExtendedPacket(std::string_view digest) const {
    std::vector<Part> parts;
    std::size_t wholeBytes = 0;
    for (const std::string_view part : parts_) {
        if (part.starts_with(digest)) {
            wholeBytes = BigEndian32(BytesAt(part, DigestBytes));
            parts.push_back({BigEndian32(BytesAt(part, DigestBytes + 4)), part.substr(PartHeadBytes)});
        }
    }
    std::stable_sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) { return a.offset < b.offset; });
    std::string whole;
    for (const Part& part : parts) {
        if (part.offset != whole.size()) {
            return {};
        }
        whole += part.data;
    }
    return whole.size() == wholeBytes && whole.size() <= MaximumCarriedBytes ? whole : std::string();
}

std::vector<std::string> MakeJpegXmp(std::string_view packet) {
    if (packet.empty()) {
        return {};
    }
    if (packet.size() <= MostSegmentBytes - PacketName.size()) {
        return {std::string(PacketName) + std::string(packet)};
    }
    // Spaces that were kept for changes in place are of no use there.
    const std::string_view whole = packet.substr(0, packet.find_last_not_of(" \t\r\n") + 1);
    const std::string digest = Md5Digits(whole);
    std::vector<std::string> segments = {std::string(PacketName) + PacketFor(digest)};
    for (std::size_t at = 0; at < whole.size(); at += MostPartBytes) {
        segments.push_back(std::string(PartName) + digest + BigEndianText(whole.size()) + BigEndianText(at) +
                           std::string(whole.substr(at, MostPartBytes)));
    }
    return segments;
}

std::string_view PacketOfGif(std::string_view content) {
    const std::string trailer = GifTrailer();
    return content.ends_with(trailer) ? content.substr(0, content.size() - trailer.size()) : std::string_view();
}

std::string GifContentOf(std::string_view packet) { return std::string(packet) + GifTrailer(); }

} // namespace imaginglibrary
