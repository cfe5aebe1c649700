// What a caller's job asks for, as wishes of the engine.
#include "imaging/exports/wishes.h"

#include "imaging/exports/handedin.h"
#include "imaging/formats.h"

namespace lumbrix::exports {

Wishes WishesOf(const lumbrix_job* job) {
    Wishes wishes;
    if (job != nullptr) {
        wishes.refusesDamage = job->strict != 0;
        wishes.keepsExisting = job->keep_existing != 0;
        wishes.onlyShrinks = job->only_shrink != 0;
        wishes.names = EncodingOf(job);
        if (job->progress != nullptr) {
            wishes.progress = [progress = job->progress, context = job->context](std::uint32_t done,
                                                                                 std::uint32_t rows) {
                return progress(context, done, rows) != 0;
            };
        }
    }
    return wishes;
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
