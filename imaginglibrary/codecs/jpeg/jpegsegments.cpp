// Keeps the segments of a JPEG header that hold metadata.
#include "imaginglibrary/codecs/jpeg/jpegsegments.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string_view>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

struct Kind {
    int marker;
    std::string_view name; // what its content begins with
    unsigned most;         // how many of a file have a meaning
};

constexpr std::array<Kind, JpegSegments::Kinds> KindsKept = {{
    {JPEG_APP0 + 1, "Exif\0\0"sv, 1},
    {JPEG_APP0 + 1, "http://ns.adobe.com/xap/1.0/\0"sv, 1},
    {JPEG_APP0 + 1, "http://ns.adobe.com/xmp/extension/\0"sv, 256}, // 16 MiB of them
    {JPEG_APP0 + 2, "ICC_PROFILE\0"sv, 255},                        // its parts are numbered by a byte
    {JPEG_APP0 + 13, "Photoshop 3.0\0"sv, 256},
    {JPEG_COM, {}, 1},
}};
constexpr std::size_t LongestName = 35;
static_assert(std::ranges::all_of(KindsKept, [](const Kind& kind) { return kind.name.size() <= LongestName; }));

void ReadBytes(j_decompress_ptr info, std::span<JOCTET> bytes) {
    jpeg_source_mgr& source = *info->src;
    while (!bytes.empty()) {
        if (source.bytes_in_buffer == 0) {
            source.fill_input_buffer(info);
        }
        const std::size_t count = std::min(bytes.size(), source.bytes_in_buffer);
        std::memcpy(bytes.data(), source.next_input_byte, count);
        source.next_input_byte += count;
        source.bytes_in_buffer -= count;
        bytes = bytes.subspan(count);
    }
}

// How many bytes follow the length, which counts itself.
std::size_t ReadLength(j_decompress_ptr info) {
    std::array<JOCTET, 2> bytes{};
    ReadBytes(info, bytes);
    const std::size_t length = std::size_t{bytes[0]} << 8 | bytes[1];
    return std::max(length, bytes.size()) - bytes.size();
}

void Skip(j_decompress_ptr info, std::size_t count) { info->src->skip_input_data(info, static_cast<long>(count)); }

// libjpeg's memory, for it ends with the decompressor, and what fails leaves as every error of libjpeg does.
jpeg_marker_struct* MakeSegment(j_decompress_ptr info, std::size_t length) {
    void* memory =
        info->mem->alloc_large(reinterpret_cast<j_common_ptr>(info), JPOOL_IMAGE, sizeof(jpeg_marker_struct) + length);
    auto* segment = static_cast<jpeg_marker_struct*>(memory);
    segment->next = nullptr;
    segment->marker = static_cast<UINT8>(info->unread_marker);
    segment->original_length = segment->data_length = static_cast<unsigned>(length);
    segment->data = reinterpret_cast<JOCTET*>(segment + 1);
    return segment;
}

} // namespace

void JpegSegments::Request(j_decompress_ptr info, jpeg_marker_parser_method read) {
    for (const Kind& kind : KindsKept) {
        jpeg_set_marker_processor(info, kind.marker, read);
    }
}

void JpegSegments::PassOver(j_decompress_ptr info) { Skip(info, ReadLength(info)); }

void JpegSegments::Read(j_decompress_ptr info) {
    const std::size_t length = ReadLength(info);
    std::array<JOCTET, LongestName> start{};
    const std::size_t startBytes = std::min(length, start.size());
    ReadBytes(info, std::span(start).first(startBytes));
    const std::string_view content(reinterpret_cast<const char*>(start.data()), startBytes);
    const auto* const kind = std::ranges::find_if(
        KindsKept, [&](const Kind& row) { return row.marker == info->unread_marker && content.starts_with(row.name); });
    const bool isWanted = kind != KindsKept.end() && length > kind->name.size() &&
                          kept_[static_cast<std::size_t>(kind - KindsKept.begin())]++ < kind->most;
    if (!isWanted) {
        Skip(info, length - startBytes);
        return;
    }
    jpeg_marker_struct* const segment = MakeSegment(info, length);
    std::memcpy(segment->data, start.data(), startBytes);
    ReadBytes(info, {segment->data + startBytes, length - startBytes});
    (last_ == nullptr ? info->marker_list : last_->next) = segment;
    last_ = segment;
}

} // namespace imaginglibrary
