// XMP packets: how JPEG segments and GIF blocks hold them.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <string>
#include <string_view>
#include <vector>

namespace imaginglibrary {

inline constexpr std::uint16_t XmpTag = 700;

// An item of bytes that is a packet.
Property XmpProperty(std::string_view packet);

// The packet among the items; empty where there is none, or one that holds a NUL or is longer than is read.
std::string_view XmpOf(const PropertyList& properties);

// Gathers the segments of a JPEG file. What is longer than a segment stands in parts of their own, which the packet
// itself names by a digest.
class JpegXmpReader {
  public:
    // The content of an APP1 segment; any other than XMP is passed over.
    void Add(std::string_view content);

    // The packet, with the parts put in where they are all there; empty where there is none.
    std::string Packet() const;

  private:
    struct Part {
        std::uint32_t offset;
        std::string_view data;
    };
    std::string ExtendedPacket(std::string_view digest) const;

    std::string_view packet_;
    std::vector<std::string_view> parts_; // from their digests on
};

// The contents of the APP1 segments that hold a packet, the first of which stands for the others.
std::vector<std::string> MakeJpegXmp(std::string_view packet);

// A GIF file has a packet as it is in an application extension, and behind it bytes that lead whoever takes it for
// blocks to its end.
inline constexpr std::string_view GifXmpApplication = "XMP DataXMP";
inline constexpr std::size_t GifXmpTrailerBytes = 257;

// The packet in what such an extension holds behind its name, lengths of blocks included but for the last, which is 0.
// Empty where there is none.
std::string_view PacketOfGif(std::string_view content);

// What such an extension holds, up to that last length.
std::string GifContentOf(std::string_view packet);

} // namespace imaginglibrary
