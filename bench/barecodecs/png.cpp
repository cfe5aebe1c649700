// PNG with libpng and its zlib.
#include "bench/barecodecs/file.h"

#include <png.h>

namespace barecodecs {

namespace {

[[noreturn]] void EndProcess(png_structp, png_const_charp message) {
    Require(false, message);
    std::abort();
}

class PngReader : public Reader {
  public:
    PngReader(const std::string& path, Order order) : file_(path, "rb") {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, EndProcess, nullptr);
        info_ = png_create_info_struct(png_);
        png_init_io(png_, file_.Get());
        png_read_info(png_, info_);
        png_set_expand(png_);
        png_set_strip_alpha(png_);
        if (order == Order::BlueFirst) {
            png_set_bgr(png_);
        }
        png_read_update_info(png_, info_);
        size_ = {png_get_image_width(png_, info_), png_get_image_height(png_, info_)};
        Require(png_get_rowbytes(png_, info_) == size_.RowBytes(), "a PNG of another kind");
    }
    ~PngReader() override { png_destroy_read_struct(&png_, &info_, nullptr); }

    Size GetSize() const override { return size_; }
    void ReadRow(std::uint8_t* row) override { png_read_row(png_, row, nullptr); }

  private:
    File file_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    Size size_;
};

class PngWriter : public Writer {
  public:
    PngWriter(const std::string& path, Size size, Order order, const Settings& settings) : file_(path, "wb") {
        png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, EndProcess, nullptr);
        info_ = png_create_info_struct(png_);
        png_init_io(png_, file_.Get());
        png_set_IHDR(png_, info_, size.width, size.height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        if (settings.level >= 0) {
            png_set_compression_level(png_, settings.level);
        }
        png_write_info(png_, info_);
        if (order == Order::BlueFirst) {
            png_set_bgr(png_);
        }
    }
    ~PngWriter() override { png_destroy_write_struct(&png_, &info_); }

    void WriteRow(std::uint8_t* row) override { png_write_row(png_, row); }
    void Finish() override {
        png_write_end(png_, info_);
        file_.Close();
    }

  private:
    File file_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

} // namespace

std::unique_ptr<Reader> ReadPng(const std::string& path, Order order) {
    return std::make_unique<PngReader>(path, order);
}

std::unique_ptr<Writer> WritePng(const std::string& path, Size size, Order order, const Settings& settings) {
    return std::make_unique<PngWriter>(path, size, order, settings);
}

} // namespace barecodecs
