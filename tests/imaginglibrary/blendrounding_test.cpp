// Every alpha laid over every kind of pixel, held against real numbers that are rounded where a channel is stored.
#include "imaginglibrary/operations/blend.h"
#include "imaginglibrary/operations/layover.h"

#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

using namespace imaginglibrary;
using namespace tests;

using Channels4 = std::array<unsigned, 4>;

unsigned Rounded(double value) { return static_cast<unsigned>(std::lround(value)); }

// `pixel` is laid over one of the format whose bytes are `target`, which become what it then is.
template <std::size_t Bytes>
void BlendInto(std::array<std::uint8_t, Bytes>& target, PixelFormat format, const Channels4& pixel) {
    const std::uint8_t bytes[4] = {static_cast<std::uint8_t>(pixel[0]), static_cast<std::uint8_t>(pixel[1]),
                                   static_cast<std::uint8_t>(pixel[2]), static_cast<std::uint8_t>(pixel[3])};
    const Canvas canvas(format, target.data(), Bytes, {0, 0, 1, 1});
    BlendRow(canvas, 0, 0, bytes, 1);
}

template <std::size_t Bytes>
void BlendPremultipliedInto(std::array<std::uint8_t, Bytes>& target, PixelFormat format, const Channels4& pixel) {
    const std::uint8_t bytes[4] = {static_cast<std::uint8_t>(pixel[0]), static_cast<std::uint8_t>(pixel[1]),
                                   static_cast<std::uint8_t>(pixel[2]), static_cast<std::uint8_t>(pixel[3])};
    const Canvas canvas(format, target.data(), Bytes, {0, 0, 1, 1});
    BlendPremultipliedRow(canvas, 0, 0, bytes, 1);
}

// A channel of some bits is widened to eight, blended, and narrowed again.
unsigned BlendedNarrowly(unsigned stored, unsigned most, unsigned source, unsigned alpha) {
    const unsigned wide = Rounded(stored * 255.0 / most);
    const unsigned blended = Rounded((source * alpha + wide * (255.0 - alpha)) / 255);
    return Rounded(blended * static_cast<double>(most) / 255);
}

TEST(BlendRounding, NarrowChannelsAreWidenedBlendedAndNarrowed) {
    for (const unsigned greenBits : {5u, 6u}) {
        const PixelFormat format = greenBits == 5 ? PixelFormat::Rgb555 : PixelFormat::Rgb565;
        const unsigned mostGreen = (1u << greenBits) - 1;
        for (unsigned level = 0; level < 32; ++level) {
            const unsigned blue = level, green = mostGreen - level, red = (level * 7 + 3) % 32;
            for (unsigned alpha = 1; alpha < 256; ++alpha) {
                const auto stored = static_cast<std::uint16_t>(blue | green << 5 | red << (5 + greenBits));
                std::array<std::uint8_t, 2> target;
                std::memcpy(target.data(), &stored, sizeof stored);
                BlendInto(target, format, {255, 100, 0, alpha});
                std::uint16_t blended;
                std::memcpy(&blended, target.data(), sizeof blended);
                ASSERT_EQ(blended & 31u, BlendedNarrowly(blue, 31, 255, alpha)) << level << ", " << alpha;
                ASSERT_EQ(blended >> 5 & mostGreen, BlendedNarrowly(green, mostGreen, 100, alpha))
                    << level << ", " << alpha;
                ASSERT_EQ(blended >> (5 + greenBits), BlendedNarrowly(red, 31, 0, alpha)) << level << ", " << alpha;
            }
        }
    }
}

TEST(BlendRounding, StraightAlphaIsRoundedOnceAChannel) {
    for (unsigned alpha = 1; alpha < 256; ++alpha) {
        for (const unsigned below : {0u, 1u, 127u, 128u, 254u, 255u}) {
            std::array<std::uint8_t, 4> target{0, 77, 255, static_cast<std::uint8_t>(below)};
            BlendInto(target, PixelFormat::Argb32, {201, 3, 40, alpha});
            const double shines = below * (255.0 - alpha) / 255;
            const double both = alpha + shines;
            EXPECT_EQ(target[0], Rounded((201 * alpha + 0 * shines) / both)) << alpha << ", " << below;
            EXPECT_EQ(target[1], Rounded((3 * alpha + 77 * shines) / both)) << alpha << ", " << below;
            EXPECT_EQ(target[2], Rounded((40 * alpha + 255 * shines) / both)) << alpha << ", " << below;
            EXPECT_EQ(target[3], Rounded(both)) << alpha << ", " << below;
        }
    }
}

TEST(BlendRounding, BytesAreRoundedOnceAChannel) {
    for (const PixelFormat format : {PixelFormat::Rgb32, PixelFormat::Pargb32}) {
        for (unsigned alpha = 1; alpha < 256; ++alpha) {
            std::array<std::uint8_t, 4> target{10, 20, 250, 200};
            BlendInto(target, format, {255, 128, 1, alpha});
            EXPECT_EQ(target[0], Rounded((255 * alpha + 10 * (255.0 - alpha)) / 255)) << alpha;
            EXPECT_EQ(target[1], Rounded((128 * alpha + 20 * (255.0 - alpha)) / 255)) << alpha;
            EXPECT_EQ(target[2], Rounded((1 * alpha + 250 * (255.0 - alpha)) / 255)) << alpha;
            EXPECT_EQ(target[3], Rounded((255 * alpha + 200 * (255.0 - alpha)) / 255)) << alpha;
        }
    }
}

TEST(BlendRounding, ChannelsOfSixteenBitsAreRoundedOnce) {
    for (unsigned alpha = 1; alpha < 256; ++alpha) {
        const std::uint16_t below[3] = {1, 32768, 65535};
        std::array<std::uint8_t, 6> target;
        std::memcpy(target.data(), below, sizeof below);
        BlendInto(target, PixelFormat::Rgb48, {255, 1, 128, alpha});
        std::uint16_t blended[3];
        std::memcpy(blended, target.data(), sizeof blended);
        EXPECT_EQ(blended[0], Rounded((65535.0 * alpha + 1 * (255.0 - alpha)) / 255)) << alpha;
        EXPECT_EQ(blended[1], Rounded((257.0 * alpha + 32768 * (255.0 - alpha)) / 255)) << alpha;
        EXPECT_EQ(blended[2], Rounded((32896.0 * alpha + 65535 * (255.0 - alpha)) / 255)) << alpha;
    }
}

TEST(BlendRounding, PremultipliedPixelsAddTheRoundedRestOfWhatIsBelow) {
    for (unsigned alpha = 1; alpha < 256; ++alpha) {
        std::array<std::uint8_t, 4> target{200, 127, 254, 90};
        BlendPremultipliedInto(target, PixelFormat::Pargb32, {alpha / 2, alpha, 255, alpha});
        EXPECT_EQ(target[0], alpha / 2 + Rounded(200 * (255.0 - alpha) / 255)) << alpha;
        EXPECT_EQ(target[1], alpha + Rounded(127 * (255.0 - alpha) / 255)) << alpha;
        EXPECT_EQ(target[2], alpha + Rounded(254 * (255.0 - alpha) / 255)) << "a colour above its alpha, " << alpha;
        EXPECT_EQ(target[3], alpha + Rounded(90 * (255.0 - alpha) / 255)) << alpha;
        std::array<std::uint8_t, 3> narrow{200, 127, 254};
        BlendPremultipliedInto(narrow, PixelFormat::Rgb24, {alpha / 2, alpha, 255, alpha});
        EXPECT_TRUE(std::equal(narrow.begin(), narrow.end(), target.begin())) << alpha;
    }
}

TEST(BlendRounding, PremultipliedPixelsAreDividedByTheirAlphaForStraightOnes) {
    for (unsigned alpha = 1; alpha < 256; ++alpha) {
        std::array<std::uint8_t, 4> target{9, 9, 9, 0};
        BlendPremultipliedInto(target, PixelFormat::Argb32, {alpha / 3, alpha - 1, std::min(alpha + 1, 255u), alpha});
        EXPECT_EQ(target[0], Rounded(alpha / 3 * 255.0 / alpha)) << alpha;
        EXPECT_EQ(target[1], Rounded((alpha - 1) * 255.0 / alpha)) << alpha;
        EXPECT_EQ(target[2], 255) << "a colour above its alpha, " << alpha;
        EXPECT_EQ(target[3], alpha);
    }
}

TEST(BlendRounding, OpaquePremultipliedPixelsAreTakenAsTheyAre) {
    std::array<std::uint8_t, 4> target{9, 9, 9, 9};
    BlendPremultipliedInto(target, PixelFormat::Rgb32, {1, 2, 3, 255});
    EXPECT_EQ(target, (std::array<std::uint8_t, 4>{1, 2, 3, 255}));
}

// A picture of one row with every alpha.
std::shared_ptr<Bitmap> EveryAlpha(PixelFormat format, const std::array<std::uint8_t, 3>& channels) {
    const auto bitmap = *Bitmap::Create({.width = 256, .height = 1, .format = format});
    for (std::size_t alpha = 0; alpha < 256; ++alpha) {
        std::uint8_t* const pixel = bitmap->Row(0) + 4 * alpha;
        std::copy(channels.begin(), channels.end(), pixel);
        pixel[3] = static_cast<std::uint8_t>(alpha);
    }
    return bitmap;
}

TEST(LayOverRounding, StraightPixelsAreRoundedOnceAChannel) {
    const auto laid = ColorsOf(*LaidOver(EveryAlpha(PixelFormat::Argb32, {254, 3, 100}), MakeColor(255, 128, 1)));
    for (unsigned alpha = 0; alpha < 256; ++alpha) {
        const double rest = 255.0 - alpha;
        EXPECT_EQ(BlueOf(laid[alpha]), Rounded((254 * alpha + 1 * rest) / 255)) << alpha;
        EXPECT_EQ(GreenOf(laid[alpha]), Rounded((3 * alpha + 128 * rest) / 255)) << alpha;
        EXPECT_EQ(RedOf(laid[alpha]), Rounded((100 * alpha + 255 * rest) / 255)) << alpha;
    }
}

TEST(LayOverRounding, PremultipliedPixelsAddTheRoundedRestOfTheColor) {
    const auto laid = ColorsOf(*LaidOver(EveryAlpha(PixelFormat::Pargb32, {200, 0, 100}), MakeColor(254, 127, 1)));
    for (unsigned alpha = 0; alpha < 256; ++alpha) {
        const double rest = 255.0 - alpha;
        EXPECT_EQ(BlueOf(laid[alpha]), std::min(200u, alpha) + Rounded(1 * rest / 255)) << alpha;
        EXPECT_EQ(GreenOf(laid[alpha]), Rounded(127 * rest / 255)) << alpha;
        EXPECT_EQ(RedOf(laid[alpha]), std::min(100u, alpha) + Rounded(254 * rest / 255)) << alpha;
    }
}

} // namespace
