// One pass of libjpeg's decompressor over a JPEG file.
#include "imaginglibrary/codecs/jpeg/jpegstream.h"

#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <cstdlib>

namespace imaginglibrary {

namespace {

constexpr std::size_t BufferBytes = 32768;
constexpr JOCTET EndMarker[] = {0xFF, JPEG_EOI};

constexpr std::uint64_t RoundedUp(std::uint64_t value, int step) {
    const auto unit = static_cast<std::uint64_t>(step);
    return (value + unit - 1) / unit * unit;
}

} // namespace

JpegStream::JpegStream(std::shared_ptr<const InputFile> file, std::uint64_t end)
    : file_(std::move(file)), end_(end), buffer_(BufferBytes) {
    source_.init_source = [](j_decompress_ptr) {};
    source_.fill_input_buffer = FillInputBuffer;
    source_.skip_input_data = SkipInputData;
    source_.resync_to_restart = jpeg_resync_to_restart;
    source_.term_source = [](j_decompress_ptr) {};
    info_.err = &errors_;
    info_.client_data = this;
}

JpegStream::~JpegStream() { jpeg_destroy_decompress(&info_); }

Result<std::unique_ptr<JpegStream>> JpegStream::Open(std::shared_ptr<const InputFile> file, JpegMarkers markers,
                                                     std::uint64_t end) {
    std::unique_ptr<JpegStream> stream(new JpegStream(std::move(file), end));
    jpeg_decompress_struct* info = &stream->info_;
    const Status status = stream->errors_.Run([=] {
        jpeg_create_decompress(info);
        info->src = &Of(info).source_;
        if (markers == JpegMarkers::Keep) {
            JpegSegments::Request(info, ReadSegment);
        }
        jpeg_read_header(info, TRUE);
    });
    if (status != Status::Ok) {
        return status;
    }
    return stream;
}

Status JpegStream::Start(J_COLOR_SPACE colorSpace, unsigned eighths, std::shared_ptr<FileDamage> damage) {
    const bool hasSeveralScans = jpeg_has_multiple_scans(&info_) != FALSE;
    if (hasSeveralScans && CoefficientBytes() > MaximumPictureBytesOf(file_->Size())) {
        return Status::OutOfMemory;
    }
    eighths_ = eighths;
    damage_ = std::move(damage);
    errors_.damage = damage_.get();
    const Status status = errors_.Run([=, this] {
        info_.out_color_space = colorSpace;
        info_.scale_num = eighths_;
        info_.scale_denom = 8;
        // Scans are read by ourselves, so that what libjpeg refuses here is the header, not the data.
        info_.buffered_image = hasSeveralScans ? TRUE : FALSE;
        jpeg_start_decompress(&info_);
    });
    if (status != Status::Ok) {
        errors_.areDataBroken = false;
        return status;
    }
    dataStart_ = soundBytes_ = BytesUsed();
    return hasSeveralScans ? ReadScans() : Status::Ok;
}

Status JpegStream::ReadScans() {
    std::uint64_t scanBlocks = BlocksOfScan(); // of all scans so far
    const Status status = errors_.Run([this, &scanBlocks] {
        const auto endsHere = [this] { return endedEarly_ && info_.arith_code; };
        for (int reached = JPEG_REACHED_SOS; reached != JPEG_REACHED_EOI && !endsHere();) {
            reached = jpeg_consume_input(&info_);
            // A scan can be a few bytes long and still cost a pass over the whole picture.
            if (reached == JPEG_REACHED_SOS) {
                scanBlocks += BlocksOfScan();
            }
            if (info_.input_scan_number > MaximumJpegScans || scanBlocks > MaximumJpegScanBlocks) {
                errors_.Leave(UndecodableContent);
            }
            if (reached == JPEG_ROW_COMPLETED || reached == JPEG_SCAN_COMPLETED) {
                soundBytes_ = BytesUsed();
            }
        }
        // An unfinished scan improves what the ones before it tell; libjpeg would wait for the end of one it shows.
        const bool isUnfinished = endsHere() && info_.input_scan_number > 1;
        jpeg_start_output(&info_, info_.input_scan_number - (isUnfinished ? 1 : 0));
    });
    if (status != Status::Ok) {
        return status;
    }
    return HasAllScans() ? Status::Ok : damage_->Meet();
}

Status JpegStream::ReadRow(std::uint8_t* row) {
    if (info_.output_scanline >= rowsWithData_) {
        errors_.areDataBroken = true;
        return UndecodableContent;
    }
    JDIMENSION count = 0;
    JDIMENSION* delivered = &count;
    const Status status = errors_.Run([=, this] {
        JSAMPROW rows[] = {row};
        *delivered = jpeg_read_scanlines(&info_, rows, 1);
    });
    if (status != Status::Ok) {
        return status;
    }
    return count == 1 ? Status::Ok : UndecodableContent;
}

std::vector<std::uint8_t> JpegStream::ColorProfile() {
    JOCTET* bytes = nullptr;
    unsigned length = 0;
    JOCTET** const found = &bytes;
    unsigned* const foundLength = &length;
    const Status status = errors_.Run([=, this] { jpeg_read_icc_profile(&info_, found, foundLength); });
    const std::unique_ptr<JOCTET, decltype(&std::free)> owner(bytes, &std::free);
    if (status != Status::Ok || bytes == nullptr) {
        return {};
    }
    return {bytes, bytes + length};
}

// Apart, so that no Result is alive when the callback jumps.
Result<std::size_t> JpegStream::Refill() {
    const std::uint64_t left = end_ - std::min(end_, position_);
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), left));
    const auto read = file_->ReadAt(position_, buffer_.data(), count);
    if (read.Ok()) {
        position_ += *read;
    }
    return read;
}

boolean JpegStream::FillInputBuffer(j_decompress_ptr info) {
    JpegStream& stream = Of(info);
    Status failure = Status::Ok;
    {
        const auto read = stream.Refill();
        failure = read.GetStatus();
        info->src->next_input_byte = stream.buffer_.data();
        info->src->bytes_in_buffer = read.Ok() ? *read : 0;
    }
    if (failure != Status::Ok) {
        stream.errors_.Leave(failure);
    }
    if (info->src->bytes_in_buffer == 0) {
        stream.MeetEnd();
        info->src->next_input_byte = EndMarker;
        info->src->bytes_in_buffer = sizeof EndMarker;
    }
    return TRUE;
}

// The Huffman decoder looks ahead, so the end alone is no damage; it warns if it lacks bits in earnest, and leaves the
// blocks grey. The arithmetic decoder makes up zeros instead, which look like blocks that were sent.
void JpegStream::MeetEnd() {
    const bool isInHeader = eighths_ == 0;
    if (isInHeader) {
        errors_.Leave(UndecodableContent);
    }
    const bool hasNoData = position_ <= dataStart_;
    if (hasNoData) {
        errors_.areDataBroken = true;
        errors_.Leave(UndecodableContent);
    }
    if (info_.arith_code && !endedEarly_) {
        errors_.MeetDamage();
        if (info_.input_scan_number <= 1) {
            const auto rowsAtOnce = static_cast<JDIMENSION>(info_.max_v_samp_factor) * eighths_;
            rowsWithData_ = (info_.input_iMCU_row + 1) * rowsAtOnce;
        }
    }
    endedEarly_ = true;
}

void JpegStream::SkipInputData(j_decompress_ptr info, long count) {
    if (count <= 0) {
        return;
    }
    const std::size_t inBuffer = std::min(info->src->bytes_in_buffer, static_cast<std::size_t>(count));
    info->src->next_input_byte += inBuffer;
    info->src->bytes_in_buffer -= inBuffer;
    Of(info).position_ += static_cast<std::size_t>(count) - inBuffer;
}

// No honest header is longer than the limit, and libjpeg itself has none.
boolean JpegStream::ReadSegment(j_decompress_ptr info) {
    if (Of(info).position_ <= MaximumMetadataBytes) {
        Of(info).segments_.Read(info);
    } else {
        JpegSegments::PassOver(info);
    }
    return TRUE;
}

// Without a marker that was read but not looked into.
std::uint64_t JpegStream::BytesUsed() const {
    constexpr std::uint64_t MarkerBytes = 2;
    const std::uint64_t inBuffer = endedEarly_ ? 0 : source_.bytes_in_buffer;
    return position_ - inBuffer - (info_.unread_marker != 0 && !endedEarly_ ? MarkerBytes : 0);
}

// Those of the components that the scan has, each once.
std::uint64_t JpegStream::BlocksOfScan() const {
    std::uint64_t blocks = 0;
    for (int i = 0; i < info_.comps_in_scan; ++i) {
        const jpeg_component_info& component = *info_.cur_comp_info[i];
        blocks += std::uint64_t{component.width_in_blocks} * component.height_in_blocks;
    }
    return blocks;
}

std::uint64_t JpegStream::CoefficientBytes() const {
    std::uint64_t bytes = 0;
    for (int i = 0; i < info_.num_components; ++i) {
        const jpeg_component_info& component = info_.comp_info[i];
        bytes += RoundedUp(component.width_in_blocks, component.h_samp_factor) *
                 RoundedUp(component.height_in_blocks, component.v_samp_factor) * sizeof(JBLOCK);
    }
    return bytes;
}

// Whether every component was sent and, if the file broke off, every coefficient to its last bit.
bool JpegStream::HasAllScans() const {
    for (int i = 0; i < info_.num_components; ++i) {
        const bool wasSent = info_.comp_info[i].quant_table != nullptr;
        if (!wasSent) {
            return false;
        }
        const auto isExact = [](int missingBits) { return missingBits == 0; };
        if (endedEarly_ && info_.coef_bits != nullptr &&
            !std::all_of(info_.coef_bits[i], info_.coef_bits[i] + DCTSIZE2, isExact)) {
            return false;
        }
    }
    return true;
}

} // namespace imaginglibrary
