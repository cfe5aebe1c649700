// The property items of PNG files as they are read.
#pragma once

#include "imaginglibrary/codecs/png/pngstream.h"
#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/properties.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace imaginglibrary {

// Gathers what the chunks before the image data tell. Chunks that are broken, longer than MaximumMetadataBytes in sum
// or beyond MaximumMetadataEntries are passed over.
class PngPropertyReader : public PngChunkReader {
  public:
    void ReadChunk(std::string_view name, std::span<const std::uint8_t> content) noexcept override;

    // Texts, then gamma, chromaticities, rendering intent, dots per unit, histogram and colour profile, then the items
    // of EXIF, at last XMP. To be called once, behind the chunks.
    PropertyList MakeProperties(const std::optional<PngStream::DotsPerUnit>& dots);

  private:
    void KeepChunk(std::string_view name, std::span<const std::uint8_t> content);
    void AddText(std::string_view name, std::string_view content);
    std::optional<std::string> InflatedText(std::string_view content);
    std::optional<std::string> InternationalText(std::string_view content);
    std::span<const std::uint8_t> ContentOf(const char* name) const;
    void AddColors();
    void AddHistogram();
    void AddColorProfile();

    PropertyList properties_;
    std::string packet_;                                      // XMP
    std::map<std::string, std::vector<std::uint8_t>> chunks_; // the first of each name, texts left aside
    std::size_t chunksRead_ = 0;
    bool lacksMemory_ = false; // for what was read
    std::size_t bytesLeft_ = MaximumMetadataBytes;
    std::size_t bytesInVain_ = 0; // inflated, and then too long or broken
};

} // namespace imaginglibrary
