// BMP files of 24 bits a pixel, whose last row comes first, and PPM files. Many rows are moved at once.
#include "bench/barecodecs/file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

namespace barecodecs {

namespace {

constexpr std::size_t HeaderBytes = 54;
constexpr std::size_t BlockBytes = 262144;

std::size_t StoredRowBytes(Size size) { return (size.RowBytes() + 3) / 4 * 4; }

std::uint32_t RowsPerBlock(Size size) {
    return static_cast<std::uint32_t>(std::clamp<std::size_t>(BlockBytes / StoredRowBytes(size), 1, size.height));
}

// Where in the file the block of rows begins whose lowest one is `y`.
long OffsetOf(Size size, std::uint32_t y) {
    return static_cast<long>(HeaderBytes + StoredRowBytes(size) * (size.height - 1 - y));
}

std::uint32_t NumberAt(const std::uint8_t* bytes) {
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t{bytes[3]} << 24;
}

void StoreNumber(std::uint8_t* bytes, std::uint32_t number) {
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
}

class BmpReader : public Reader {
  public:
    BmpReader(const std::string& path, Order order) : file_(path, "rb"), order_(order) {
        std::array<std::uint8_t, HeaderBytes> header{};
        Require(std::fread(header.data(), 1, header.size(), file_.Get()) == header.size(), "the header");
        size_ = {NumberAt(&header[18]), NumberAt(&header[22])};
        Require(NumberAt(&header[10]) == HeaderBytes && header[28] == 24 && NumberAt(&header[30]) == 0,
                "a BMP of another kind");
        block_.resize(StoredRowBytes(size_) * RowsPerBlock(size_));
    }

    Size GetSize() const override { return size_; }

    void ReadRow(std::uint8_t* row) override {
        const std::uint32_t rowOfBlock = y_ % RowsPerBlock(size_);
        if (rowOfBlock == 0) {
            rowsOfBlock_ = std::min(RowsPerBlock(size_), size_.height - y_);
            const std::size_t bytes = StoredRowBytes(size_) * rowsOfBlock_;
            Require(std::fseek(file_.Get(), OffsetOf(size_, y_ + rowsOfBlock_ - 1), SEEK_SET) == 0 &&
                        std::fread(block_.data(), 1, bytes, file_.Get()) == bytes,
                    "rows");
        }
        std::memcpy(row, block_.data() + StoredRowBytes(size_) * (rowsOfBlock_ - 1 - rowOfBlock), size_.RowBytes());
        if (order_ == Order::RedFirst) {
            ExchangeOrder(row, size_.width);
        }
        ++y_;
    }

  private:
    File file_;
    Order order_;
    Size size_;
    std::vector<std::uint8_t> block_;
    std::uint32_t rowsOfBlock_ = 0;
    std::uint32_t y_ = 0;
};

class BmpWriter : public Writer {
  public:
    BmpWriter(const std::string& path, Size size, Order order)
        : file_(path, "wb"), order_(order), size_(size), block_(StoredRowBytes(size) * RowsPerBlock(size)) {
        std::array<std::uint8_t, HeaderBytes> header{'B', 'M'};
        const auto pixelBytes = static_cast<std::uint32_t>(StoredRowBytes(size) * size.height);
        StoreNumber(&header[2], HeaderBytes + pixelBytes);
        StoreNumber(&header[10], HeaderBytes);
        StoreNumber(&header[14], 40);
        StoreNumber(&header[18], size.width);
        StoreNumber(&header[22], size.height);
        header[26] = 1;
        header[28] = 24;
        StoreNumber(&header[34], pixelBytes);
        Require(std::fwrite(header.data(), 1, header.size(), file_.Get()) == header.size(), "the header");
    }

    // A block is filled from its end, so that an unfinished one lies there.
    void WriteRow(std::uint8_t* row) override {
        if (order_ == Order::RedFirst) {
            ExchangeOrder(row, size_.width);
        }
        const std::uint32_t rowsOfBlock = y_ % RowsPerBlock(size_) + 1;
        std::uint8_t* const place = block_.data() + block_.size() - StoredRowBytes(size_) * rowsOfBlock;
        std::memcpy(place, row, size_.RowBytes());
        if (rowsOfBlock == RowsPerBlock(size_) || y_ + 1 == size_.height) {
            const std::size_t bytes = StoredRowBytes(size_) * rowsOfBlock;
            Require(std::fseek(file_.Get(), OffsetOf(size_, y_), SEEK_SET) == 0 &&
                        std::fwrite(place, 1, bytes, file_.Get()) == bytes,
                    "rows");
        }
        ++y_;
    }

    void Finish() override { file_.Close(); }

  private:
    File file_;
    Order order_;
    Size size_;
    std::vector<std::uint8_t> block_;
    std::uint32_t y_ = 0;
};

class PpmReader : public Reader {
  public:
    PpmReader(const std::string& path, Order order) : file_(path, "rb"), order_(order) {
        unsigned width = 0, height = 0;
        Require(std::fscanf(file_.Get(), "P6 %u %u 255", &width, &height) == 2 && std::fgetc(file_.Get()) == '\n',
                "a PPM of another kind");
        size_ = {width, height};
    }

    Size GetSize() const override { return size_; }

    void ReadRow(std::uint8_t* row) override {
        Require(std::fread(row, 1, size_.RowBytes(), file_.Get()) == size_.RowBytes(), "a row");
        if (order_ == Order::BlueFirst) {
            ExchangeOrder(row, size_.width);
        }
    }

  private:
    File file_;
    Order order_;
    Size size_;
};

} // namespace

void ExchangeOrder(std::uint8_t* row, std::uint32_t width) {
    for (std::uint32_t x = 0; x < width; ++x) {
        std::swap(row[3 * x], row[3 * x + 2]);
    }
}

std::unique_ptr<Reader> ReadBmp(const std::string& path, Order order) {
    return std::make_unique<BmpReader>(path, order);
}

std::unique_ptr<Reader> ReadPpm(const std::string& path, Order order) {
    return std::make_unique<PpmReader>(path, order);
}

std::unique_ptr<Writer> WriteBmp(const std::string& path, Size size, Order order) {
    return std::make_unique<BmpWriter>(path, size, order);
}

} // namespace barecodecs
