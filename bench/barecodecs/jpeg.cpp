// JPEG with libjpeg.
#include "bench/barecodecs/file.h"

#include <jpeglib.h>

namespace barecodecs {

namespace {

J_COLOR_SPACE ColorSpaceOf(Order order) { return order == Order::BlueFirst ? JCS_EXT_BGR : JCS_EXT_RGB; }

// libjpeg ends the process by itself where something fails.
class JpegReader : public Reader {
  public:
    JpegReader(const std::string& path, Order order, unsigned eighths) : file_(path, "rb") {
        info_.err = jpeg_std_error(&errors_);
        jpeg_create_decompress(&info_);
        jpeg_stdio_src(&info_, file_.Get());
        jpeg_read_header(&info_, TRUE);
        info_.out_color_space = ColorSpaceOf(order);
        info_.scale_num = eighths;
        info_.scale_denom = 8;
        jpeg_start_decompress(&info_);
    }
    ~JpegReader() override { jpeg_destroy_decompress(&info_); }

    Size GetSize() const override { return {info_.output_width, info_.output_height}; }
    void ReadRow(std::uint8_t* row) override { jpeg_read_scanlines(&info_, &row, 1); }

  private:
    File file_;
    jpeg_error_mgr errors_{};
    jpeg_decompress_struct info_{};
};

class JpegWriter : public Writer {
  public:
    JpegWriter(const std::string& path, Size size, Order order, const Settings& settings) : file_(path, "wb") {
        info_.err = jpeg_std_error(&errors_);
        jpeg_create_compress(&info_);
        jpeg_stdio_dest(&info_, file_.Get());
        info_.image_width = size.width;
        info_.image_height = size.height;
        info_.input_components = 3;
        info_.in_color_space = ColorSpaceOf(order);
        jpeg_set_defaults(&info_);
        jpeg_set_quality(&info_, settings.quality, TRUE);
        info_.optimize_coding = TRUE; // for files as small as ours
        jpeg_start_compress(&info_, TRUE);
    }
    ~JpegWriter() override { jpeg_destroy_compress(&info_); }

    void WriteRow(std::uint8_t* row) override { jpeg_write_scanlines(&info_, &row, 1); }
    void Finish() override {
        jpeg_finish_compress(&info_);
        file_.Close();
    }

  private:
    File file_;
    jpeg_error_mgr errors_{};
    jpeg_compress_struct info_{};
};

} // namespace

std::unique_ptr<Reader> ReadJpeg(const std::string& path, Order order, unsigned eighths) {
    return std::make_unique<JpegReader>(path, order, eighths);
}

std::unique_ptr<Writer> WriteJpeg(const std::string& path, Size size, Order order, const Settings& settings) {
    return std::make_unique<JpegWriter>(path, size, order, settings);
}

} // namespace barecodecs
