// One pass of libjpeg's decompressor over a JPEG file.
#pragma once

#include "imaginglibrary/codecs/jpeg/jpegerrors.h"
#include "imaginglibrary/codecs/jpeg/jpegsegments.h"
#include "imaginglibrary/files/inputfile.h"

#include <climits>
#include <cstdint>
#include <memory>
#include <vector>

namespace imaginglibrary {

// Whether the segments with metadata are kept for Header().marker_list, or passed over; rows have no use for them.
enum class JpegMarkers { Keep, PassOver };

// The legal order of calls is Open, Start once, ReadRow up to output_height times. Belongs to one thread at a time.
//
// Damaged or missing image data are grey, as libjpeg leaves them. Only the end marker may be missing without that being
// damage, and whatever else stands behind the last complete row; arithmetic-coded files must have theirs, for without
// it a cut cannot be told from a short but complete scan.
class JpegStream {
  public:
    static constexpr std::uint64_t WholeFile = UINT64_MAX;

    // Reads up to the first scan. `end` is where the file counts as cut off. UndecodableContent for a header that is
    // not whole, InvalidParameter for a size that libjpeg refuses.
    static Result<std::unique_ptr<JpegStream>> Open(std::shared_ptr<const InputFile> file, JpegMarkers markers,
                                                    std::uint64_t end = WholeFile);

    ~JpegStream();
    JpegStream(const JpegStream&) = delete;
    JpegStream& operator=(const JpegStream&) = delete;

    // What the header says and, after Start, the output's size.
    const jpeg_decompress_struct& Header() const { return info_; }

    // The embedded colour profile; empty where there is none that is whole. Needs the markers.
    std::vector<std::uint8_t> ColorProfile();

    // Makes ready to deliver rows in `colorSpace`, reduced to `eighths` eighths. Decodes all scans where there are
    // several; OutOfMemory where their coefficients exceed MaximumPictureBytes. `damage` is told where pixels are lost;
    // where it refuses that, they are UndecodableContent, here and in ReadRow.
    Status Start(J_COLOR_SPACE colorSpace, unsigned eighths, std::shared_ptr<FileDamage> damage);

    // The next row from the top: output_width times out_color_components bytes.
    Status ReadRow(std::uint8_t* row);

    // Whether Start or ReadRow failed because libjpeg cannot go on with the image data.
    bool AreDataBroken() const { return errors_.areDataBroken; }

    // How much of the file was read without a failure.
    std::uint64_t SoundBytes() const { return soundBytes_; }

  private:
    JpegStream(std::shared_ptr<const InputFile> file, std::uint64_t end);

    static JpegStream& Of(j_decompress_ptr info) { return *static_cast<JpegStream*>(info->client_data); }
    static boolean FillInputBuffer(j_decompress_ptr info);
    static void SkipInputData(j_decompress_ptr info, long count);
    static boolean ReadSegment(j_decompress_ptr info);

    Result<std::size_t> Refill();
    void MeetEnd();
    Status ReadScans();
    std::uint64_t BytesUsed() const;
    std::uint64_t BlocksOfScan() const;
    std::uint64_t CoefficientBytes() const;
    bool HasAllScans() const;

    std::shared_ptr<const InputFile> file_;
    std::uint64_t end_;
    std::uint64_t position_ = 0;  // in the file, behind the buffer
    std::uint64_t dataStart_ = 0; // known from Start on
    std::uint64_t soundBytes_ = 0;
    std::vector<std::uint8_t> buffer_;
    JpegSegments segments_;
    bool endedEarly_ = false;
    unsigned eighths_ = 0; // 0 until Start
    std::shared_ptr<FileDamage> damage_;
    JDIMENSION rowsWithData_ = UINT_MAX; // known once arithmetic-coded data have ended early
    JpegErrors errors_;
    jpeg_source_mgr source_{};
    jpeg_decompress_struct info_{};
};

} // namespace imaginglibrary
