// Writes JPEG files.
#include "imaginglibrary/codecs/jpeg/jpegwriter.h"

#include "imaginglibrary/codecs/jpeg/jpegcompactor.h"
#include "imaginglibrary/codecs/jpeg/jpegerrors.h"
#include "imaginglibrary/codecs/jpeg/jpegproperties.h"
#include "imaginglibrary/codecs/metadata/colorprofile.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpipe.h"

#include <algorithm>
#include <span>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::size_t BufferBytes = 32768;

UINT16 StoredDensity(double dotsPerInch) {
    return static_cast<UINT16>(std::clamp(DotsPerInchOrAssumed(dotsPerInch), 1.0, 65535.0));
}

// Empty where there is none, or one that is too long for all markers together.
std::span<const std::uint8_t> ProfileOf(const PropertyList& properties) {
    constexpr std::size_t MostMarkers = 255;
    constexpr std::size_t MostMarkerBytes = 65519; // what a name and two numbers leave of one
    const auto profile = RgbProfileOf(properties);
    return profile.size() <= MostMarkers * MostMarkerBytes ? profile : std::span<const std::uint8_t>();
}

// libjpeg's compressor over an output file.
class JpegSink {
  public:
    explicit JpegSink(OutputFile& file) : compactor_(file), buffer_(BufferBytes) {
        destination_.init_destination = OfferBuffer;
        destination_.empty_output_buffer = EmptyBuffer;
        destination_.term_destination = WriteRest;
        info_.err = &errors_;
        info_.client_data = this;
    }

    ~JpegSink() { jpeg_destroy_compress(&info_); }
    JpegSink(const JpegSink&) = delete;
    JpegSink& operator=(const JpegSink&) = delete;

    // `profile` is one that fits into markers, or empty.
    Status Start(const PictureInfo& picture, int quality, const std::vector<JpegMarker>& markers,
                 std::span<const std::uint8_t> profile) {
        const PictureInfo* header = &picture;
        const std::vector<JpegMarker>* following = &markers;
        return errors_.Run([=, this] {
            jpeg_create_compress(&info_);
            info_.dest = &destination_;
            info_.image_width = header->width;
            info_.image_height = header->height;
            info_.input_components = 3;
            info_.in_color_space = JCS_EXT_BGR;
            jpeg_set_defaults(&info_);
            jpeg_set_quality(&info_, quality, TRUE);
            info_.density_unit = 1;
            info_.X_density = StoredDensity(header->resolution.horizontal);
            info_.Y_density = StoredDensity(header->resolution.vertical);
            jpeg_start_compress(&info_, TRUE);
            for (const JpegMarker& marker : *following) {
                jpeg_write_marker(&info_, marker.kind, marker.content.data(),
                                  static_cast<unsigned>(marker.content.size()));
            }
            if (!profile.empty()) {
                jpeg_write_icc_profile(&info_, profile.data(), static_cast<unsigned>(profile.size()));
            }
        });
    }

    // `row` is Rgb24. libjpeg does not write to it, for all that its types say.
    Status WriteRow(std::uint8_t* row) {
        return errors_.Run([=, this] {
            JSAMPROW rows[] = {row};
            jpeg_write_scanlines(&info_, rows, 1);
        });
    }

    Status Finish() {
        const Status status = errors_.Run([this] { jpeg_finish_compress(&info_); });
        return status == Status::Ok ? compactor_.Finish() : status;
    }

  private:
    static JpegSink& Of(j_compress_ptr info) { return *static_cast<JpegSink*>(info->client_data); }

    static void OfferBuffer(j_compress_ptr info) {
        info->dest->next_output_byte = Of(info).buffer_.data();
        info->dest->free_in_buffer = BufferBytes;
    }

    // libjpeg wants the whole buffer written, whatever free_in_buffer says.
    static boolean EmptyBuffer(j_compress_ptr info) {
        Of(info).Write(BufferBytes);
        OfferBuffer(info);
        return TRUE;
    }

    static void WriteRest(j_compress_ptr info) { Of(info).Write(BufferBytes - info->dest->free_in_buffer); }

    void Write(std::size_t count) {
        if (const Status status = Append(count); status != Status::Ok) {
            errors_.Leave(status);
        }
    }

    Status Append(std::size_t count) noexcept {
        try {
            return compactor_.Append(buffer_.data(), count);
        } catch (...) {
            return Status::OutOfMemory;
        }
    }

    JpegCompactor compactor_;
    std::vector<std::uint8_t> buffer_;
    JpegErrors errors_;
    jpeg_destination_mgr destination_{};
    jpeg_compress_struct info_{};
};

} // namespace

Status WriteJpeg(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                 OutputFile& file) {
    const PictureInfo& info = picture.Info();
    if (info.width < 1 || info.height < 1 || info.width > JPEG_MAX_DIMENSION || info.height > JPEG_MAX_DIMENSION) {
        return Status::InvalidParameter;
    }
    JpegSink sink(file);
    if (const Status status = sink.Start(info, options.quality, MakeJpegMarkers(properties), ProfileOf(properties));
        status != Status::Ok) {
        return status;
    }
    const Status status = PipeRows(OpenRowsAs(picture, PixelFormat::Rgb24), BytesPerRow(PixelFormat::Rgb24, info.width),
                                   info.height, [&](std::uint32_t, std::uint8_t* row) { return sink.WriteRow(row); });
    if (status != Status::Ok) {
        return status;
    }
    return sink.Finish();
}

} // namespace imaginglibrary
