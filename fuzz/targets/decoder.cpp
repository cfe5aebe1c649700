// Opens the input as a file of one format, LUMBRIX_FUZZED_FORMAT, and reads all that it tells.
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "fuzz/support/pixels.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/bytefiles.h"
#include "tests/support/codecs.h"

namespace {

using namespace imaginglibrary;

// What callers rely on without looking.
void CheckInfo(const PictureInfo& info) {
    fuzz::Require(IsAcceptableSize(info.width, info.height), "sides are within the limits");
    fuzz::Require(BitsPerPixel(info.format) > 0, "there is a pixel format");
    fuzz::Require(IsIndexed(info.format) || info.palette.empty(), "only indexed pictures have a palette");
    fuzz::Require(!IsIndexed(info.format) || info.palette.size() <= std::size_t{1} << BitsPerPixel(info.format),
                  "a palette is no longer than its indices reach");
    fuzz::Require(info.resolution.horizontal >= 0 && info.resolution.vertical >= 0, "resolutions are not negative");
}

void CheckReduced(const PictureInfo& whole, const ScaledPicture& reduced, std::uint32_t width, std::uint32_t height) {
    const PictureInfo& info = reduced.picture->Info();
    CheckInfo(info);
    fuzz::Require(reduced.scale > 0 && reduced.scale < 1, "a reduced picture is smaller");
    fuzz::Require(info.width >= width && info.height >= height, "a reduced picture is large enough");
    fuzz::Require(info.width <= whole.width && info.height <= whole.height, "a reduced picture does not grow");
}

void ReadPicture(const Decoder& picture) {
    const PictureInfo& info = picture.Info();
    CheckInfo(info);
    if (!fuzz::ReadSomeRows(picture)) {
        return;
    }
    for (const std::uint32_t parts : {2u, 8u}) {
        const std::uint32_t width = (info.width + parts - 1) / parts;
        const std::uint32_t height = (info.height + parts - 1) / parts;
        if (const auto reduced = picture.ReducedTo(width, height)) {
            CheckReduced(info, *reduced, width, height);
            fuzz::ReadSomeRows(*reduced->picture);
        }
    }
    if (picture.Damage() != nullptr) {
        picture.Damage()->Refuse();
        fuzz::ReadSomeRows(picture);
    }
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    static const Codec& codec = tests::CodecOf(LUMBRIX_FUZZED_FORMAT);
    const auto file = std::make_shared<tests::MemoryInput>(std::string(reinterpret_cast<const char*>(bytes), count));
    const auto picture = codec.open(file);
    if (picture.Ok()) {
        ReadPicture(**picture);
    }
}
