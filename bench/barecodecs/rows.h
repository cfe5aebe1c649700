// Reading and writing pictures row by row with the codec libraries alone: nothing is checked twice, nothing kept, no
// thread started. Whatever fails ends the process with a message.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace barecodecs {

// Which of a pixel's three bytes comes first. BMP files have blue first; most codecs can do either for nothing.
enum class Order { RedFirst, BlueFirst };

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    std::size_t RowBytes() const { return std::size_t{3} * width; }
};

// What a writer does otherwise than its library by itself.
struct Settings {
    int quality = 75;     // of JPEG
    int level = -1;       // of zlib in PNG; -1 is the library's own
    bool isPacked = true; // TIFF: LZW with prediction, or no compression
};

class Reader {
  public:
    virtual ~Reader() = default;
    // Of the rows that are delivered.
    virtual Size GetSize() const = 0;
    // The next row from the top.
    virtual void ReadRow(std::uint8_t* row) = 0;
};

class Writer {
  public:
    virtual ~Writer() = default;
    // The next row from the top. It may be changed.
    virtual void WriteRow(std::uint8_t* row) = 0;
    // Behind the last row.
    virtual void Finish() = 0;
};

// `eighths` is the scale at which libjpeg delivers the picture, 1 to 8.
std::unique_ptr<Reader> ReadJpeg(const std::string& path, Order order, unsigned eighths);
std::unique_ptr<Reader> ReadPng(const std::string& path, Order order);
std::unique_ptr<Reader> ReadBmp(const std::string& path, Order order);
std::unique_ptr<Reader> ReadPpm(const std::string& path, Order order);

std::unique_ptr<Writer> WriteJpeg(const std::string& path, Size size, Order order, const Settings& settings);
std::unique_ptr<Writer> WritePng(const std::string& path, Size size, Order order, const Settings& settings);
std::unique_ptr<Writer> WriteTiff(const std::string& path, Size size, Order order, const Settings& settings);
std::unique_ptr<Writer> WriteBmp(const std::string& path, Size size, Order order);

// All of it at once, for its rows are indices.
void ConvertPalettePngToGif(const std::string& source, const std::string& target);

// Ends the process with a message unless what is said is so.
void Require(bool isSo, const char* what);

// Exchanges the first and the third byte of every pixel.
void ExchangeOrder(std::uint8_t* row, std::uint32_t width);

} // namespace barecodecs
