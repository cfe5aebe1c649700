// Makes the JPEG files that libjpeg writes row by row smaller: their symbols get the codes that are best for them.
#include "imaginglibrary/codecs/jpeg/jpegcompactor.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

constexpr std::size_t MostSymbolsKept = std::size_t{1} << 18;
constexpr std::size_t SymbolsAtOnce = std::size_t{1} << 16;
constexpr std::size_t MostPairs = 4;

constexpr std::uint8_t Marker = 0xFF;
constexpr std::uint8_t StartOfImage = 0xD8;
constexpr std::uint8_t EndOfImage = 0xD9;
constexpr std::uint8_t BaselineFrame = 0xC0;
constexpr std::uint8_t HuffmanTables = 0xC4;
constexpr std::uint8_t StartOfScan = 0xDA;
constexpr std::size_t MarkerBytes = 2;
constexpr std::size_t HeadBytes = 4; // of a segment: its marker and its length

std::size_t BigEndian16(const std::uint8_t* bytes) { return std::size_t{bytes[0]} << 8 | bytes[1]; }

// Has each symbol that a block can have occur once more: what is still to come may have any of them.
void CountEach(SymbolFrequencies& first, SymbolFrequencies& others) {
    constexpr int MostFirstBits = 11;
    constexpr int MostBits = 10;
    for (std::size_t bits = 0; bits <= MostFirstBits; ++bits) {
        ++first[bits];
    }
    for (std::size_t zeros = 0; zeros < 16; ++zeros) {
        for (std::size_t bits = zeros == 0 || zeros == 15 ? 0 : 1; bits <= MostBits; ++bits) {
            ++others[zeros << 4 | bits];
        }
    }
}

// `place` is the table's class on top and its number below.
void AppendTable(std::vector<std::uint8_t>& contents, std::size_t place, const HuffmanCode& code) {
    contents.push_back(static_cast<std::uint8_t>(place));
    contents.insert(contents.end(), code.countOfLength.begin() + 1, code.countOfLength.end());
    contents.insert(contents.end(), code.symbols.begin(), code.symbols.end());
}

} // namespace

Status JpegCompactor::Append(const std::uint8_t* bytes, std::size_t count) {
    bytes_.insert(bytes_.end(), bytes, bytes + count);
    if (!reader_) {
        if (const Status status = TakeSegments(); status != Status::Ok || !reader_) {
            return status;
        }
    }
    return TakeScan(bytes_.size(), false);
}

Status JpegCompactor::Finish() {
    constexpr std::uint8_t End[] = {Marker, EndOfImage};
    if (!reader_ || bytes_.size() < sizeof End || !std::equal(std::begin(End), std::end(End), bytes_.end() - 2)) {
        return Status::GenericError;
    }
    if (const Status status = TakeScan(bytes_.size() - sizeof End, true); status != Status::Ok) {
        return status;
    }
    if (const Status status = symbolBits_.empty() ? ChooseCodes() : Status::Ok; status != Status::Ok) {
        return status;
    }
    writer_.Finish();
    writer_.Bytes().insert(writer_.Bytes().end(), std::begin(End), std::end(End));
    return Flush();
}

// Takes the segments that are there as a whole, up to the scan's header.
Status JpegCompactor::TakeSegments() {
    std::size_t taken = 0;
    Status status = Status::Ok;
    while (status == Status::Ok && !reader_) {
        const std::span left = std::span<const std::uint8_t>(bytes_).subspan(taken);
        if (left.size() < HeadBytes) {
            break;
        }
        const std::size_t length = left[1] == StartOfImage ? MarkerBytes : MarkerBytes + BigEndian16(&left[2]);
        if (left.size() < length) {
            break;
        }
        status = TakeSegment(left.first(length));
        taken += length;
    }
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(taken));
    return status;
}

Status JpegCompactor::TakeSegment(std::span<const std::uint8_t> segment) {
    const std::uint8_t marker = segment[1];
    if (marker == HuffmanTables) {
        return TakeTables(segment.subspan(HeadBytes));
    }
    if (marker == StartOfScan) {
        scanHeader_.assign(segment.begin(), segment.end());
        return TakeScanHeader(segment.subspan(HeadBytes));
    }
    if (marker == BaselineFrame) {
        if (const Status status = TakeFrame(segment.subspan(HeadBytes)); status != Status::Ok) {
            return status;
        }
    }
    return file_.Append(segment.data(), segment.size());
}

Status JpegCompactor::TakeTables(std::span<const std::uint8_t> contents) {
    constexpr std::size_t CountBytes = 1 + HuffmanCode::LongestLength;
    while (contents.size() >= CountBytes) {
        HuffmanCode code;
        std::copy_n(contents.begin() + 1, HuffmanCode::LongestLength, code.countOfLength.begin() + 1);
        std::size_t symbols = 0;
        for (const std::uint8_t count : code.countOfLength) {
            symbols += count;
        }
        const std::size_t number = contents[0] & 15;
        if (number >= MostPairs || contents[0] >> 4 > 1 || contents.size() < CountBytes + symbols) {
            return Status::GenericError;
        }
        code.symbols.assign(contents.begin() + CountBytes,
                            contents.begin() + static_cast<std::ptrdiff_t>(CountBytes + symbols));
        const std::size_t table = 2 * number + (contents[0] >> 4);
        tables_.resize(std::max(tables_.size(), 2 * number + 2));
        tables_[table] = std::move(code);
        contents = contents.subspan(CountBytes + symbols);
    }
    return Status::Ok;
}

Status JpegCompactor::TakeFrame(std::span<const std::uint8_t> contents) {
    constexpr std::size_t FixedBytes = 6;
    constexpr std::size_t ComponentBytes = 3;
    if (contents.size() < FixedBytes || contents.size() < FixedBytes + ComponentBytes * contents[5]) {
        return Status::GenericError;
    }
    height_ = BigEndian16(&contents[1]);
    width_ = BigEndian16(&contents[3]);
    for (std::size_t i = 0; i < contents[5]; ++i) {
        const auto component = contents.subspan(FixedBytes + i * ComponentBytes, ComponentBytes);
        components_.push_back({component[0], std::size_t{component[1]} >> 4, std::size_t{component[1]} & 15});
    }
    return Status::Ok;
}

Status JpegCompactor::TakeScanHeader(std::span<const std::uint8_t> contents) {
    constexpr std::size_t BlockSide = 8;
    if (contents.empty() || contents[0] != components_.size() || contents.size() < 1 + 2 * components_.size()) {
        return Status::GenericError;
    }
    ScanLayout layout;
    std::size_t columns = 1;
    std::size_t rows = 1;
    for (std::size_t i = 0; i < components_.size(); ++i) {
        const Component& component = components_[i];
        const std::size_t table = 2 * (std::size_t{contents[2 + 2 * i]} & 15);
        if (contents[1 + 2 * i] != component.name || table >= tables_.size()) {
            return Status::GenericError;
        }
        layout.firstTables.insert(layout.firstTables.end(), component.columns * component.rows,
                                  static_cast<std::uint8_t>(table));
        columns = std::max(columns, component.columns);
        rows = std::max(rows, component.rows);
    }
    const auto unitsOf = [](std::size_t length, std::size_t side) { return (length + side - 1) / side; };
    layout.units = std::uint64_t{unitsOf(width_, columns * BlockSide)} * unitsOf(height_, rows * BlockSide);
    frequencies_.resize(tables_.size());
    symbols_.reserve(MostSymbolsKept);
    reader_.emplace(std::move(layout), tables_);
    return Status::Ok;
}

Status JpegCompactor::TakeScan(std::size_t end, bool areAll) {
    const std::span bytes = std::span<const std::uint8_t>(bytes_).first(end);
    std::size_t read = 0;
    if (symbolBits_.empty()) {
        auto* const frequencies = frequencies_.data();
        read = reader_->Read(bytes, areAll, [this, frequencies](ScanSymbol symbol) {
            ++frequencies[symbol.table][symbol.value];
            symbols_.push_back(symbol);
        });
    } else {
        read = reader_->Read(bytes, areAll, [this](ScanSymbol symbol) { Put(symbol); });
    }
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(read));
    if (!reader_->IsSound()) {
        return Status::GenericError;
    }
    if (symbols_.size() <= MostSymbolsKept) {
        return Flush();
    }
    for (std::size_t table = 0; table < frequencies_.size(); table += 2) {
        CountEach(frequencies_[table], frequencies_[table + 1]);
    }
    return ChooseCodes();
}

// Writes the tables, the scan's header and the symbols that have waited.
Status JpegCompactor::ChooseCodes() {
    std::vector<std::uint8_t> segment(HeadBytes);
    for (std::size_t table = 0; table < tables_.size(); ++table) {
        const HuffmanCode code = MakeHuffmanCode(frequencies_[table]);
        AppendTable(segment, (table % 2) << 4 | table / 2, code);
        symbolBits_.push_back(BitsOfSymbols(code));
    }
    const std::size_t length = segment.size() - MarkerBytes;
    segment[0] = Marker;
    segment[1] = HuffmanTables;
    segment[2] = static_cast<std::uint8_t>(length >> 8);
    segment[3] = static_cast<std::uint8_t>(length);
    segment.insert(segment.end(), scanHeader_.begin(), scanHeader_.end());
    Status status = file_.Append(segment.data(), segment.size());
    for (std::size_t i = 0; i < symbols_.size() && status == Status::Ok; ++i) {
        Put(symbols_[i]);
        status = i % SymbolsAtOnce == 0 ? Flush() : status;
    }
    std::vector<ScanSymbol>().swap(symbols_);
    return status == Status::Ok ? Flush() : status;
}

void JpegCompactor::Put(ScanSymbol symbol) {
    const SymbolBits code = symbolBits_[symbol.table][symbol.value];
    writer_.Put(std::uint32_t{code.bits} << symbol.BitCount() | symbol.bits, code.length + symbol.BitCount());
}

// Only whole bytes, and the last few wait.
Status JpegCompactor::Flush() {
    const Status status = file_.Append(writer_.Bytes().data(), writer_.Bytes().size());
    writer_.Bytes().clear();
    return status;
}

} // namespace imaginglibrary
