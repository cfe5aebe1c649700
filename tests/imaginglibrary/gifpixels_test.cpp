// The compressed pixels of GIF files: code lengths of every kind, and data that end early or make no sense.
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

Palette FourGifColors() { return {Red, Green, Blue, White}; }

// A GIF of one image of four colours, put together byte by byte.
struct CodedGif {
    unsigned width = 4;
    unsigned height = 3;
    unsigned pixelBits = 2;
    std::string data; // compressed
    bool isInterlaced = false;
    int transparent = -1; // index
    bool hasTwoImages = false;
    std::string end = std::string("\0;", 2); // of the data and of the file

    std::string Whole() const {
        const auto number = [](unsigned value) {
            return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
        };
        std::string bytes = "GIF89a" + number(width) + number(height) + std::string("\x81\0\0", 3);
        for (const Color color : FourGifColors()) {
            bytes +=
                {static_cast<char>(RedOf(color)), static_cast<char>(GreenOf(color)), static_cast<char>(BlueOf(color))};
        }
        if (transparent >= 0) {
            bytes += std::string("!\xF9\4\1\0\0", 6) + static_cast<char>(transparent) + '\0';
        }
        const std::string place = "," + std::string(4, '\0') + number(width) + number(height);
        bytes += place + (isInterlaced ? '\x40' : '\0') + static_cast<char>(pixelBits);
        for (std::size_t at = 0; at < data.size(); at += 255) {
            const std::string block = data.substr(at, 255);
            bytes += static_cast<char>(block.size()) + block;
        }
        if (hasTwoImages) {
            bytes += '\0' + place + std::string("\0\2\0", 3);
        }
        return bytes + end;
    }
};

// Codes of growing length, least significant bit first.
class CodeWriter {
  public:
    explicit CodeWriter(unsigned pixelBits) : pixelBits_(pixelBits) { Put(1u << pixelBits); }

    // A code for a string, or the clear code.
    CodeWriter& Put(unsigned code) {
        PutBits(code);
        if (code == 1u << pixelBits_) {
            length_ = pixelBits_ + 1;
            known_ = (1u << pixelBits_) + 2;
            hasPrevious_ = false;
            return *this;
        }
        known_ += hasPrevious_ && known_ < 4096 ? 1 : 0;
        hasPrevious_ = true;
        if (known_ >= 1u << length_ && length_ < 12) {
            ++length_;
        }
        return *this;
    }

    CodeWriter& PutEnd() {
        PutBits((1u << pixelBits_) + 1);
        return *this;
    }

    std::string Bytes() const { return bytes_; }

  private:
    void PutBits(unsigned code) {
        for (unsigned bit = 0; bit < length_; ++bit, ++bits_) {
            if (bits_ % 8 == 0) {
                bytes_.push_back('\0');
            }
            bytes_.back() =
                static_cast<char>(static_cast<unsigned char>(bytes_.back()) | ((code >> bit & 1) << bits_ % 8));
        }
    }

    unsigned pixelBits_;
    unsigned length_ = pixelBits_ + 1;
    unsigned known_ = 0;
    bool hasPrevious_ = false;
    std::size_t bits_ = 0;
    std::string bytes_;
};

// The first `count` of the pixels 0, 1, 2, 3, 0 ..., one code each, and the end code.
std::string SingleCodes(unsigned pixelBits, unsigned count) {
    CodeWriter codes(pixelBits);
    for (unsigned i = 0; i < count; ++i) {
        codes.Put(i % 4);
    }
    return codes.PutEnd().Bytes();
}

// Those pixels, and `missing` in place of the later ones.
std::vector<Color> FirstPixels(std::size_t count, std::size_t all, Color missing) {
    const Palette colors = FourGifColors();
    std::vector<Color> pixels(all, missing);
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i] = colors[i % 4];
    }
    return pixels;
}

TEST(GifPixels, CodesMayBeLongerThanColorsNeed) {
    for (unsigned bits = 2; bits <= 11; ++bits) {
        const CodedGif gif{.width = 100, .height = 60, .pixelBits = bits, .data = SingleCodes(bits, 6000)};
        const auto picture = Opened(GifCodec(), gif.Whole());
        ASSERT_TRUE(picture) << bits;
        EXPECT_EQ(ColorsOf(*picture), FirstPixels(6000, 6000, 0)) << bits;
        EXPECT_FALSE(picture->Damage()->IsMet()) << bits;
    }
}

TEST(GifPixels, CodesMayBeShorterThanIsUsual) {
    CodeWriter two(1);
    CodeWriter one(0);
    for (int i = 0; i < 6; ++i) {
        two.Put(0).Put(1);
        one.Put(0).Put(0);
    }
    EXPECT_EQ(ColorsOf(GifCodec(), CodedGif{.pixelBits = 1, .data = two.Bytes()}.Whole()),
              (std::vector<Color>{Red, Green, Red, Green, Red, Green, Red, Green, Red, Green, Red, Green}));
    EXPECT_EQ(ColorsOf(GifCodec(), CodedGif{.pixelBits = 0, .data = one.Bytes()}.Whole()), std::vector<Color>(12, Red));
}

TEST(GifPixels, CodesOfMoreThanTwelveBitsAreUndecodable) {
    for (const unsigned bits : {12u, 13u, 255u}) {
        EXPECT_EQ(OpenBytes(GifCodec(), CodedGif{.pixelBits = bits, .data = "codes"}.Whole()).GetStatus(),
                  UndecodableContent);
    }
}

TEST(GifPixels, StringsMayRunOverTheEndsOfLines) {
    // Each code stands for the string before it and one index more: the one that is made at that moment.
    CodeWriter codes(2);
    codes.Put(2);
    for (unsigned code = 6; code < 6 + 12; ++code) {
        codes.Put(code);
    }
    const CodedGif gif{.width = 7, .height = 13, .data = codes.Bytes()};
    EXPECT_EQ(ColorsOf(GifCodec(), gif.Whole()), std::vector<Color>(91, Blue)) << "1 + 2 + ... + 13 pixels";
}

TEST(GifPixels, StringsEndInWhatFollowedThem) {
    // 0 1 (0 1) (0 1 0) 3
    CodeWriter codes(2);
    codes.Put(0).Put(1).Put(6).Put(8).Put(3);
    const CodedGif gif{.width = 8, .height = 1, .data = codes.Bytes()};
    EXPECT_EQ(ColorsOf(GifCodec(), gif.Whole()), (std::vector<Color>{Red, Green, Red, Green, Red, Green, Red, White}));
}

TEST(GifPixels, ClearForgetsTheStrings) {
    CodeWriter codes(2);
    codes.Put(0).Put(1).Put(4).Put(2).Put(3).Put(6);
    const CodedGif gif{.width = 6, .height = 1, .data = codes.Bytes()};
    EXPECT_EQ(ColorsOf(GifCodec(), gif.Whole()), (std::vector<Color>{Red, Green, Blue, White, Blue, White}));
}

TEST(GifPixels, IndexWithoutAnEntryIsBlack) {
    const CodedGif gif{.width = 2, .height = 1, .pixelBits = 11, .data = CodeWriter(11).Put(300).Put(1).Bytes()};
    EXPECT_EQ(ColorsOf(GifCodec(), gif.Whole()), (std::vector<Color>{Black, Green}));
}

TEST(GifPixels, CodesThatStandForNothingAreUndecodable) {
    const std::string data[] = {
        CodeWriter(2).Put(6).Bytes(),        // behind a clear code nothing is known
        CodeWriter(2).Put(0).Put(7).Bytes(), // not even the one that is made now
        CodeWriter(2).Put(0).Put(1).Put(2).Put(9).Bytes(),
    };
    for (const std::string& codes : data) {
        const auto picture = Opened(GifCodec(), CodedGif{.data = codes}.Whole());
        EXPECT_EQ(ReadAllRows(*picture), UndecodableContent) << codes.size();
    }
}

TEST(GifPixels, DataThatEndEarlyAreShownAndMarkedAsDamaged) {
    for (const unsigned bits : {2u, 11u}) {
        for (const unsigned count : {1u, 4u, 6u, 11u}) {
            const auto picture =
                Opened(GifCodec(), CodedGif{.pixelBits = bits, .data = SingleCodes(bits, count)}.Whole());
            ASSERT_TRUE(picture);
            EXPECT_EQ(ColorsOf(*picture), FirstPixels(count, 12, Red)) << count;
            EXPECT_TRUE(picture->Damage()->IsMet()) << count;
        }
    }
}

TEST(GifPixels, MissingPixelsAreClearWhereTheyCanBe) {
    const auto transparent = ColorsOf(GifCodec(), CodedGif{.data = SingleCodes(2, 2), .transparent = 3}.Whole());
    EXPECT_EQ(transparent, FirstPixels(2, 12, 0x00FFFFFF));
    const auto several = ColorsOf(GifCodec(), CodedGif{.data = SingleCodes(2, 5), .hasTwoImages = true}.Whole());
    EXPECT_EQ(several, FirstPixels(5, 12, 0));
}

TEST(GifPixels, InterlacedDataThatEndEarlyShowTheLinesThatCame) {
    // Of six lines the first, the fifth and half of the third came.
    const CodedGif gif{.height = 6, .data = SingleCodes(2, 10), .isInterlaced = true, .transparent = 3};
    const auto picture = Opened(GifCodec(), gif.Whole());
    constexpr Color Clear = 0x00FFFFFF;
    const std::vector<Color> none(4, Clear);
    std::vector<Color> expected;
    for (const auto& line : {std::vector<Color>{Red, Green, Blue, Clear},
                             none,
                             {Red, Green, Clear, Clear},
                             none,
                             {Red, Green, Blue, Clear},
                             none}) {
        expected.insert(expected.end(), line.begin(), line.end());
    }
    EXPECT_EQ(ColorsOf(*picture), expected);
    EXPECT_TRUE(picture->Damage()->IsMet());
}

TEST(GifPixels, DataThatEndEarlyAreUndecodableWhereDamageIsRefusedOrNoPixelCame) {
    const auto refused = Opened(GifCodec(), CodedGif{.data = SingleCodes(2, 11)}.Whole());
    refused->Damage()->Refuse();
    EXPECT_EQ(ReadAllRows(*refused), UndecodableContent);
    const auto whole = Opened(GifCodec(), CodedGif{.data = SingleCodes(2, 12)}.Whole());
    whole->Damage()->Refuse();
    EXPECT_EQ(ReadAllRows(*whole), Status::Ok);
    EXPECT_EQ(ReadAllRows(GifCodec(), CodedGif{.data = SingleCodes(2, 0)}.Whole()), UndecodableContent);
    EXPECT_EQ(ReadAllRows(GifCodec(), CodedGif{.data = ""}.Whole()), UndecodableContent);
}

// The end code, or the end of the blocks, is what tells a short picture from a file that broke off.
TEST(GifPixels, FileThatBreaksOffIsUndecodable) {
    for (const unsigned bits : {2u, 11u}) {
        CodedGif gif{.pixelBits = bits, .data = SingleCodes(bits, 12), .end = ""};
        gif.data.resize(gif.data.size() - 4);
        EXPECT_EQ(ReadAllRows(GifCodec(), gif.Whole()), UndecodableContent) << bits;
        gif.end = std::string(1, '\0');
        EXPECT_EQ(ReadAllRows(GifCodec(), gif.Whole()), Status::Ok) << bits;
    }
}

TEST(GifPixels, LargePictureOfNextToNothingIsUndecodable) {
    // 2^26 pixels, and a line more.
    EXPECT_EQ(ReadAllRows(GifCodec(), CodedGif{.width = 8192, .height = 8192, .data = SingleCodes(2, 9)}.Whole()),
              Status::Ok);
    EXPECT_EQ(ReadAllRows(GifCodec(), CodedGif{.width = 8192, .height = 8193, .data = SingleCodes(2, 9)}.Whole()),
              UndecodableContent);
}

TEST(GifPixels, LargePictureOfWhichAQuarterCameIsShown) {
    // Each chain of ever longer strings has some eight million pixels.
    const auto statusOf = [](int chains) {
        CodeWriter codes(2);
        for (int chain = 0; chain < chains; ++chain) {
            codes.Put(4).Put(1);
            for (unsigned code = 6; code < 4096; ++code) {
                codes.Put(code);
            }
        }
        return ReadAllRows(GifCodec(), CodedGif{.width = 8192, .height = 8193, .data = codes.Bytes()}.Whole());
    };
    EXPECT_EQ(statusOf(2), UndecodableContent);
    EXPECT_EQ(statusOf(3), Status::Ok);
}

TEST(GifPixels, SpoiledOrCutBytesNeverCrash) {
    for (const CodedGif& gif : {CodedGif{.pixelBits = 11, .data = SingleCodes(11, 12)},
                                CodedGif{.data = SingleCodes(2, 7), .isInterlaced = true, .transparent = 3},
                                CodedGif{.pixelBits = 0, .data = SingleCodes(2, 7)}}) {
        const std::string whole = gif.Whole();
        for (std::size_t at = 0; at < whole.size(); ++at) {
            ReadAllRows(GifCodec(), whole.substr(0, at));
            for (const int flip : {0x01, 0x04, 0x40, 0x80, 0xFF}) {
                std::string spoiled = whole;
                spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
                ReadAllRows(GifCodec(), spoiled);
            }
        }
    }
}

} // namespace
