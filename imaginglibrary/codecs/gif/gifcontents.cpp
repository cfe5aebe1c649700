// What a GIF file holds besides the pixels of its first image.
#include "imaginglibrary/codecs/gif/gifcontents.h"

#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

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

constexpr int ImageIntroducer = 0x2C;
constexpr int ExtensionIntroducer = 0x21;
constexpr int ControlExtension = 0xF9;
constexpr int CommentExtension = 0xFE;
constexpr int ApplicationExtension = 0xFF;
constexpr std::string_view LoopApplication = "NETSCAPE2.0";

constexpr std::size_t ScreenBytes = 13;    // with the signature
constexpr std::size_t DescriptorBytes = 9; // of an image
constexpr std::size_t ControlBytes = 4;
constexpr std::size_t LoopBytes = 3;

// Of the table of colours that the flags of a screen or an image tell of.
constexpr std::size_t TableBytes(std::uint8_t flags) {
    return (flags & 0x80) != 0 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

class GifScanner {
  public:
    explicit GifScanner(std::shared_ptr<const InputFile> file) : reader_(std::move(file)) {}

    GifContents Scan() {
        if (ReadScreen()) {
            while (delays_.size() < MaximumGifFrames && ReadBlock()) {
            }
        }
        return {.images = delays_.size(), .properties = MakeProperties()};
    }

  private:
    bool ReadScreen() {
        std::array<std::uint8_t, ScreenBytes> screen;
        if (reader_.Read(screen.data(), screen.size()) != screen.size()) {
            return false;
        }
        background_ = screen[11];
        palette_.resize(TableBytes(screen[10]));
        return reader_.Read(palette_.data(), palette_.size()) == palette_.size();
    }

    // False at the end of the file, or where it cannot be made out any more.
    bool ReadBlock() {
        switch (reader_.ReadByte()) {
        case ImageIntroducer:
            return ReadImage();
        case ExtensionIntroducer:
            ReadExtension(reader_.ReadByte());
            return true;
        default:
            return false;
        }
    }

    bool ReadImage() {
        std::array<std::uint8_t, DescriptorBytes> descriptor;
        if (reader_.Read(descriptor.data(), descriptor.size()) != descriptor.size()) {
            return false;
        }
        if (delays_.empty()) {
            firstTransparent_ = transparent_;
        }
        delays_.push_back(delay_);
        delay_ = 0;
        transparent_.reset();
        constexpr std::size_t CodeSizeBytes = 1;
        reader_.Seek(reader_.Position() + TableBytes(descriptor[8]) + CodeSizeBytes);
        ReadSubBlocks(0);
        return true;
    }

    void ReadExtension(int kind) {
        switch (kind) {
        case ControlExtension:
            KeepControl(ReadSubBlocks(ControlBytes));
            break;
        case CommentExtension:
            if (comment_.empty()) {
                comment_ = ReadSubBlocks(MaximumCommentBytes);
            } else {
                ReadSubBlocks(0);
            }
            break;
        case ApplicationExtension:
            KeepLoopCount(ReadSubBlocks(LoopApplication.size() + LoopBytes));
            break;
        default:
            ReadSubBlocks(0);
            break;
        }
    }

    // Goes behind the last of them and gives back what stands in them, cut off behind `most` bytes.
    std::string ReadSubBlocks(std::size_t most) {
        std::string content;
        for (int length = reader_.ReadByte(); length > 0; length = reader_.ReadByte()) {
            const std::size_t start = content.size();
            const auto bytes = static_cast<std::size_t>(length);
            const std::size_t kept = std::min(bytes, most - start);
            content.resize(start + kept);
            content.resize(start + reader_.Read(content.data() + start, kept));
            reader_.Seek(reader_.Position() + bytes - kept);
        }
        return content;
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
        return properties;
    }

    ByteReader reader_;
    std::vector<std::uint8_t> palette_;
    std::uint8_t background_ = 0;
    std::uint32_t delay_ = 0;                 // of the next image
    std::optional<std::uint8_t> transparent_; // of the next image
    std::optional<std::uint8_t> firstTransparent_;
    std::vector<std::uint32_t> delays_; // one for each image
    std::uint16_t loopCount_ = 1;       // 0 is for ever
    std::string comment_;
};

} // namespace

GifContents ReadGifContents(std::shared_ptr<const InputFile> file) { return GifScanner(std::move(file)).Scan(); }

} // namespace imaginglibrary
