// What a caller's job asks for, as wishes of the engine.
#include "imaging/exports/wishes.h"

#include "imaging/exports/handedin.h"
#include "imaging/formats.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace lumbrix::exports {

namespace {

// The colour that six hexadecimal digits name, opaque; nothing for any other text.
std::optional<std::uint32_t> ColorOf(std::string_view text) {
    constexpr std::size_t Digits = 6;
    constexpr std::uint32_t Opaque = 0xFF000000;
    std::uint32_t color = 0;
    const char* const behind = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), behind, color, 16);
    const bool isColor = text.size() == Digits && error == std::errc() && end == behind;
    return isColor ? std::optional(Opaque | color) : std::nullopt;
}

} // namespace

Wishes WishesOf(const lumbrix_job* job) {
    Wishes wishes;
    if (job != nullptr) {
        wishes.refusesDamage = job->strict != 0;
        wishes.keepsExisting = job->keep_existing != 0;
        wishes.onlyShrinks = job->only_shrink != 0;
        wishes.names = EncodingOf(job);
        wishes.turnsUpright = job->auto_orient != 0;
        wishes.stripsMetadata = job->strip != 0;
        wishes.keepsProfile = job->keep_profile != 0;
        if (job->progress != nullptr) {
            wishes.progress = [progress = job->progress, context = job->context](std::uint32_t done,
                                                                                 std::uint32_t rows) {
                return progress(context, done, rows) != 0;
            };
        }
    }
    return wishes;
}

bool TakeBackground(const lumbrix_job* job, Wishes& wishes) {
    if (job == nullptr || job->background == nullptr) {
        return true;
    }
    wishes.background = ColorOf(job->background);
    return wishes.background.has_value();
}

bool TakeEncoding(const lumbrix_job* job, const std::string& mimeWord, Wishes& wishes) {
    constexpr int32_t HighestQuality = 100;
    if (job == nullptr) {
        return true;
    }
    if (job->quality != 0) {
        wishes.encoding.quality = job->quality;
    }
    const auto compression = CompressionOf(job->compression != nullptr ? job->compression : "default", mimeWord);
    if (compression && *compression != 0) {
        wishes.encoding.compression = compression;
    }
    return compression && job->quality >= 0 && job->quality <= HighestQuality;
}

} // namespace lumbrix::exports
