// What a GIF file holds besides the pixels of its first image.
#include "imaginglibrary/codecs/gif/gifcontents.h"

#include "imaginglibrary/codecs/gif/gifblocks.h"
#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t DelaysTag = 0x5100;
constexpr std::uint32_t LoopCountTag = 0x5101;
constexpr std::uint32_t PaletteTag = 0x5102;
constexpr std::uint32_t BackgroundTag = 0x5103;
constexpr std::uint32_t TransparentTag = 0x5104;

constexpr std::string_view LoopApplication = "NETSCAPE2.0";

constexpr std::size_t ControlBytes = 4;
constexpr std::size_t LoopBytes = 3;

// An exception must not travel through the C library.
int ReadFromReader(GifFileType* gif, GifByteType* to, int count) noexcept {
    try {
        return static_cast<int>(static_cast<ByteReader*>(gif->UserData)->Read(to, static_cast<std::size_t>(count)));
    } catch (...) {
        return 0;
    }
}

class GifScanner {
  public:
    explicit GifScanner(std::shared_ptr<const InputFile> file)
        : reader_(std::move(file)), gif_(DGifOpen(&reader_, ReadFromReader, nullptr)) {}

    Result<GifContents> Scan() {
        if (gif_) {
            KeepScreen();
            while (delays_.size() < MaximumGifFrames && ReadRecord()) {
            }
        }
        if (reader_.Failure() != Status::Ok) {
            return reader_.Failure();
        }
        return GifContents{.images = delays_.size(), .properties = MakeProperties()};
    }

  private:
    void KeepScreen() {
        background_ = static_cast<std::uint8_t>(gif_->SBackGroundColor);
        const ColorMapObject* map = gif_->SColorMap;
        for (int i = 0; map != nullptr && i < map->ColorCount; ++i) {
            palette_.insert(palette_.end(), {map->Colors[i].Red, map->Colors[i].Green, map->Colors[i].Blue});
        }
    }

    // False at the end of the file, or where it cannot be made out any more.
    bool ReadRecord() {
        switch (reader_.ReadByte()) {
        case GifImageMark:
            return ReadImage();
        case GifExtensionMark:
            return ReadExtension();
        default:
            return false;
        }
    }

    // An image counts once its descriptor is there.
    bool ReadImage() {
        std::array<std::uint8_t, GifDescriptorBytes> descriptor;
        if (reader_.Read(descriptor.data(), descriptor.size()) != descriptor.size()) {
            return false;
        }
        if (delays_.empty()) {
            firstTransparent_ = transparent_;
        }
        delays_.push_back(delay_);
        delay_ = 0;
        transparent_.reset();
        constexpr std::size_t EntryBytes = 3;
        reader_.Seek(reader_.Position() + EntryBytes * GifPaletteEntries(descriptor.back()));
        const bool hasCodeSize = reader_.ReadByte() >= 0;
        return hasCodeSize && PassOverGifBlocks(reader_);
    }

    bool ReadExtension() {
        const int kind = reader_.ReadByte();
        std::string content;
        const bool isRead = ReadContent(kind, content);
        KeepExtension(kind, content);
        return isRead;
    }

    // No more of it than anybody wants to know.
    bool ReadContent(int kind, std::string& content) {
        std::size_t most = MostOtherBytes;
        if (kind == COMMENT_EXT_FUNC_CODE) {
            most = comment_.empty() ? MaximumCommentBytes : 0;
        }
        std::size_t skipped = 1; // bytes of a block: its length
        std::array<char, 1 + GifMostBlockBytes> block;
        while (content.size() < most) {
            const int length = reader_.ReadByte();
            const auto count = static_cast<std::size_t>(std::max(length, 0));
            if (length <= 0 || reader_.Read(&block[1], count) != count) {
                return length == 0;
            }
            block[0] = static_cast<char>(length);
            content.append(block.data() + skipped, std::min(count + 1 - skipped, most - content.size()));
            if (kind == APPLICATION_EXT_FUNC_CODE && content == GifXmpApplication && packet_.empty()) {
                skipped = 0; // the packet itself is read as lengths and blocks
                most = GifXmpApplication.size() + MaximumCarriedBytes + GifXmpTrailerBytes;
            }
        }
        return PassOverGifBlocks(reader_);
    }

    void KeepExtension(int kind, const std::string& content) {
        switch (kind) {
        case GRAPHICS_EXT_FUNC_CODE:
            KeepControl(content);
            break;
        case COMMENT_EXT_FUNC_CODE:
            if (comment_.empty()) {
                comment_ = content;
            }
            break;
        case APPLICATION_EXT_FUNC_CODE:
            KeepLoopCount(content);
            KeepPacket(content);
            break;
        default:
            break;
        }
    }

    void KeepControl(const std::string& content) {
        if (content.size() < ControlBytes) {
            return;
        }
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(content.data());
        constexpr std::uint8_t HasTransparent = 1;
        delay_ = LittleEndian16(bytes + 1);
        transparent_.reset();
        if ((bytes[0] & HasTransparent) != 0) {
            transparent_ = bytes[3];
        }
    }

    void KeepLoopCount(const std::string& content) {
        constexpr char LoopBlock = 1;
        const std::size_t at = LoopApplication.size();
        if (content.size() == at + LoopBytes && content.starts_with(LoopApplication) && content[at] == LoopBlock) {
            loopCount_ = LittleEndian16(reinterpret_cast<const std::uint8_t*>(content.data()) + at + 1);
        }
    }

    void KeepPacket(std::string_view content) {
        if (packet_.empty() && content.starts_with(GifXmpApplication)) {
            packet_ = PacketOfGif(content.substr(GifXmpApplication.size()));
        }
    }

    PropertyList MakeProperties() const {
        PropertyList properties;
        if (delays_.size() > 1) {
            Property delays{DelaysTag, PropertyType::Long, std::vector<std::uint8_t>(4 * delays_.size())};
            std::memcpy(delays.value.data(), delays_.data(), delays.value.size());
            properties.Add(std::move(delays));
            properties.Add(ShortProperty(LoopCountTag, loopCount_));
        }
        if (!palette_.empty()) {
            properties.Add({PaletteTag, PropertyType::Byte, palette_});
            properties.Add({BackgroundTag, PropertyType::Byte, {background_}});
        }
        if (firstTransparent_) {
            properties.Add({TransparentTag, PropertyType::Byte, {*firstTransparent_}});
        }
        if (!comment_.empty()) {
            properties.Add(AsciiProperty(CommentTag, comment_));
        }
        if (!packet_.empty()) {
            properties.Add(XmpProperty(packet_));
        }
        return properties;
    }

    struct Closer {
        void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
    };

    static constexpr std::size_t MostOtherBytes = LoopApplication.size() + LoopBytes;

    ByteReader reader_;
    std::unique_ptr<GifFileType, Closer> gif_;
    std::vector<std::uint8_t> palette_;
    std::uint8_t background_ = 0;
    std::uint32_t delay_ = 0;                 // of the next image
    std::optional<std::uint8_t> transparent_; // of the next image
    std::optional<std::uint8_t> firstTransparent_;
    std::vector<std::uint32_t> delays_; // one for each image
    std::uint16_t loopCount_ = 1;       // 0 is for ever
    std::string comment_;
    std::string packet_; // XMP
};

} // namespace

Result<GifContents> ReadGifContents(std::shared_ptr<const InputFile> file) {
    return GifScanner(std::move(file)).Scan();
}

} // namespace imaginglibrary
