// The run-length compression of 4-bit and 8-bit device-independent bitmaps.
#include "imaginglibrary/codecs/dib/dibrle.h"

#include <algorithm>
#include <vector>

namespace imaginglibrary {

namespace {

// Where a row's data begin, and at which column; offset 0 for a row that was skipped whole.
struct RowStart {
    std::uint64_t offset = 0;
    std::uint32_t column = 0;
};

// One command of the stream, with its operands read but the pixels of a literal run still ahead.
struct Command {
    enum class Kind { Run, Literal, EndOfRow, EndOfBitmap, Move, EndOfFile };
    Kind kind;
    std::uint32_t count = 0; // pixels; columns of a move
    std::uint32_t rows = 0;  // rows of a move
    std::uint8_t value = 0;  // pixels of a run
};

Command ReadCommand(ByteReader& bytes) {
    const int count = bytes.ReadByte();
    const int value = bytes.ReadByte();
    if (value < 0) {
        return {Command::Kind::EndOfFile};
    }
    if (count > 0) {
        return {Command::Kind::Run, static_cast<std::uint32_t>(count), 0, static_cast<std::uint8_t>(value)};
    }
    if (value == 0) {
        return {Command::Kind::EndOfRow};
    }
    if (value == 1) {
        return {Command::Kind::EndOfBitmap};
    }
    if (value == 2) {
        const int columns = bytes.ReadByte();
        const int rows = bytes.ReadByte();
        if (rows < 0) {
            return {Command::Kind::EndOfFile};
        }
        return {Command::Kind::Move, static_cast<std::uint32_t>(columns), static_cast<std::uint32_t>(rows)};
    }
    return {Command::Kind::Literal, static_cast<std::uint32_t>(value)};
}

// A literal run is padded to an even number of bytes.
std::uint32_t LiteralBytes(std::uint32_t pixels, unsigned bitsPerPixel) {
    const std::uint32_t bytes = (pixels * bitsPerPixel + 7) / 8;
    return bytes + bytes % 2;
}

enum class RleData { Whole, Short, None };

class RleRows : public RowReader {
  public:
    RleRows(std::shared_ptr<const InputFile> file, const Dib& dib)
        : fileBytes_(file->Size()), bytes_(std::move(file)), width_(dib.width), height_(dib.height),
          bits_(dib.bitsPerPixel), topDown_(dib.topDown), starts_(dib.height) {}

    // Finds the start of every row, in the file's order.
    Result<RleData> FindRows(std::uint64_t pixels) {
        std::uint32_t row = 0;
        std::uint32_t column = 0;
        bytes_.Seek(pixels);
        starts_[0] = {pixels, 0};
        for (;;) {
            const Command command = ReadCommand(bytes_);
            switch (command.kind) {
            case Command::Kind::Run:
                column += command.count;
                break;
            case Command::Kind::Literal:
                if (!HasLiteral(command)) {
                    return row == 0 && column == 0 && bytes_.Position() >= fileBytes_ ? RleData::None : RleData::Short;
                }
                column += command.count;
                bytes_.Seek(bytes_.Position() + LiteralBytes(command.count, bits_));
                break;
            case Command::Kind::EndOfBitmap:
                return RleData::Whole;
            case Command::Kind::EndOfFile:
                if (bytes_.Failure() != Status::Ok) {
                    return bytes_.Failure();
                }
                if (row == 0 && column == 0) {
                    return RleData::None;
                }
                // Some writers leave out the end mark; the picture is there all the same.
                return row + 1 >= height_ && column >= width_ ? RleData::Whole : RleData::Short;
            case Command::Kind::EndOfRow:
            case Command::Kind::Move:
                column = command.kind == Command::Kind::Move ? column + command.count : 0;
                const std::uint32_t step = command.kind == Command::Kind::Move ? command.rows : 1;
                if (step > 0) {
                    row += step;
                    if (row >= height_) {
                        return RleData::Whole;
                    }
                    starts_[row] = {bytes_.Position(), column};
                }
                break;
            }
            column = std::min(column, width_);
        }
    }

    Status ReadRow(std::uint8_t* row) override {
        const RowStart start = starts_[topDown_ ? next_ : height_ - 1 - next_];
        ++next_;
        std::fill_n(row, (std::size_t{width_} * bits_ + 7) / 8, std::uint8_t{0});
        if (start.offset == 0) {
            return Status::Ok;
        }
        bytes_.Seek(start.offset);
        for (std::uint32_t column = start.column;;) {
            const Command command = ReadCommand(bytes_);
            switch (command.kind) {
            case Command::Kind::Run:
                Run(row, column, command);
                break;
            case Command::Kind::Literal:
                Literal(row, column, command);
                break;
            case Command::Kind::Move:
                if (command.rows > 0) {
                    return bytes_.Failure();
                }
                break;
            default:
                return bytes_.Failure();
            }
            column = std::min(column + command.count, width_);
        }
    }

  private:
    // But for the byte that pads it, which may be missing at the end of the file.
    bool HasLiteral(const Command& command) const {
        return bytes_.Position() + (command.count * bits_ + 7) / 8 <= fileBytes_;
    }

    void Put(std::uint8_t* row, std::uint32_t column, std::uint8_t index) const {
        if (column >= width_) {
            return;
        }
        if (bits_ == 8) {
            row[column] = index;
        } else {
            const int shift = column % 2 == 0 ? 4 : 0;
            row[column / 2] = static_cast<std::uint8_t>((row[column / 2] & ~(15 << shift)) | index << shift);
        }
    }

    // A run of 4-bit pixels alternates between the two halves of its value.
    void Run(std::uint8_t* row, std::uint32_t column, const Command& command) const {
        for (std::uint32_t i = 0; i < command.count; ++i) {
            const int nibble = i % 2 == 0 ? command.value >> 4 : command.value & 15;
            Put(row, column + i, bits_ == 8 ? command.value : static_cast<std::uint8_t>(nibble));
        }
    }

    void Literal(std::uint8_t* row, std::uint32_t column, const Command& command) {
        std::uint8_t values[256];
        const std::uint32_t count = LiteralBytes(command.count, bits_);
        const std::size_t read = bytes_.Read(values, count);
        std::fill(values + read, values + count, std::uint8_t{0});
        for (std::uint32_t i = 0; i < command.count; ++i) {
            const int nibble = i % 2 == 0 ? values[i / 2] >> 4 : values[i / 2] & 15;
            Put(row, column + i, bits_ == 8 ? values[i] : static_cast<std::uint8_t>(nibble));
        }
    }

    std::uint64_t fileBytes_;
    ByteReader bytes_;
    std::uint32_t width_;
    std::uint32_t height_;
    unsigned bits_;
    bool topDown_;
    std::vector<RowStart> starts_;
    std::uint32_t next_ = 0;
};

} // namespace

Result<std::unique_ptr<RowReader>> OpenRleRows(std::shared_ptr<const InputFile> file, const Dib& dib,
                                               std::uint64_t pixels, FileDamage& damage) {
    auto rows = std::make_unique<RleRows>(std::move(file), dib);
    const auto data = rows->FindRows(pixels);
    if (!data.Ok()) {
        return data.GetStatus();
    }
    if (*data == RleData::None || (*data == RleData::Short && damage.Meet() != Status::Ok)) {
        return UndecodableContent;
    }
    return std::unique_ptr<RowReader>(std::move(rows));
}

} // namespace imaginglibrary
