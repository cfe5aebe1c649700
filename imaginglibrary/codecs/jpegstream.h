// One pass of libjpeg's decompressor over a JPEG file.
#pragma once

#include "imaginglibrary/codecs/jpegerrors.h"
#include "imaginglibrary/files/inputfile.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace imaginglibrary {

// Whether the markers with metadata are kept for Header().marker_list; rows have no use for them.
enum class JpegMarkers { Keep, PassOver };

// The legal order of calls is Open, Start once, ReadRow up to output_height times. Belongs to one thread at a time.
//
// Damaged or missing image data is UndecodableContent, never filled with grey. Only the end marker may be missing, and
// whatever else stands behind the last complete row; arithmetic-coded files must have theirs, for without it a cut
// cannot be told from a short but complete scan.
class JpegStream {
  public:
    // Reads up to the first scan. InvalidParameter for a size that libjpeg refuses.
    static Result<std::unique_ptr<JpegStream>> Open(std::shared_ptr<const InputFile> file, JpegMarkers markers);

    ~JpegStream();
    JpegStream(const JpegStream&) = delete;
    JpegStream& operator=(const JpegStream&) = delete;

    // What the header says and, after Start, the output's size.
    const jpeg_decompress_struct& Header() const { return info_; }

    // The embedded colour profile; empty where there is none that is whole. Needs the markers.
    std::vector<std::uint8_t> ColorProfile();

    // Makes ready to deliver rows in `colorSpace`, reduced to `eighths` eighths. Decodes all scans where there are
    // several; OutOfMemory where their coefficients exceed MaximumPictureBytes.
    Status Start(J_COLOR_SPACE colorSpace, unsigned eighths);

    // The next row from the top: output_width times out_color_components bytes.
    Status ReadRow(std::uint8_t* row);

  private:
    explicit JpegStream(std::shared_ptr<const InputFile> file);

    static JpegStream& Of(j_decompress_ptr info) { return *static_cast<JpegStream*>(info->client_data); }
    static boolean FillInputBuffer(j_decompress_ptr info);
    static void SkipInputData(j_decompress_ptr info, long count);
    static void CountScans(j_common_ptr info);

    void SaveMarkers(unsigned mostBytes);
    Result<std::size_t> Refill();
    std::uint64_t CoefficientBytes() const;
    bool HasAllScans() const;

    std::shared_ptr<const InputFile> file_;
    std::uint64_t position_ = 0; // in the file, behind the buffer
    std::vector<std::uint8_t> buffer_;
    bool endedEarly_ = false;
    JpegErrors errors_;
    jpeg_source_mgr source_{};
    jpeg_progress_mgr progress_{};
    jpeg_decompress_struct info_{};
};

} // namespace imaginglibrary
