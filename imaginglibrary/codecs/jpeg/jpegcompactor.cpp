// Makes the JPEG files that libjpeg writes row by row smaller: their symbols get the codes that are best for them.
#include "imaginglibrary/codecs/jpeg/jpegcompactor.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

constexpr std::size_t MostBytesKept = std::size_t{4} << 20;
constexpr std::size_t BytesAtOnce = std::size_t{1} << 18;
constexpr std::size_t MostTables = 4;

constexpr std::uint8_t Marker = 0xFF;
constexpr std::uint8_t StartOfImage = 0xD8;
constexpr std::uint8_t EndOfImage = 0xD9;
constexpr std::uint8_t BaselineFrame = 0xC0;
constexpr std::uint8_t HuffmanTables = 0xC4;
constexpr std::uint8_t StartOfScan = 0xDA;
constexpr std::size_t MarkerBytes = 2;
constexpr std::size_t HeadBytes = 4; // of a segment: its marker and its length

std::size_t BigEndian16(const std::uint8_t* bytes) { return std::size_t{bytes[0]} << 8 | bytes[1]; }

// How often each symbol that a block can have occurs at least.
constexpr TablePair<SymbolFrequencies> OnceEach() {
    constexpr int MostFirstBits = 11;
    constexpr int MostBits = 10;
    TablePair<SymbolFrequencies> frequencies{};
    for (std::size_t bits = 0; bits <= MostFirstBits; ++bits) {
        frequencies.first[bits] = 1;
    }
    for (std::size_t zeros = 0; zeros < 16; ++zeros) {
        for (std::size_t bits = zeros == 0 || zeros == 15 ? 0 : 1; bits <= MostBits; ++bits) {
            frequencies.others[zeros << 4 | bits] = 1;
        }
    }
    return frequencies;
}

void AddTo(SymbolFrequencies& sums, const SymbolFrequencies& summands) {
    std::transform(sums.begin(), sums.end(), summands.begin(), sums.begin(), std::plus<>());
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
    if (!counter_) {
        if (const Status status = TakeSegments(); status != Status::Ok || !counter_) {
            return status;
        }
    }
    if (recoder_) {
        return Recode(bytes_.size(), false);
    }
    Count(bytes_.size(), false);
    if (bytes_.size() <= MostBytesKept) {
        return Status::Ok;
    }
    // What is still to come may have any symbol.
    for (auto& frequencies : frequencies_) {
        AddTo(frequencies.first, OnceEach().first);
        AddTo(frequencies.others, OnceEach().others);
    }
    if (const Status status = ChooseCodes(); status != Status::Ok) {
        return status;
    }
    return Recode(bytes_.size(), false);
}

Status JpegCompactor::Finish() {
    constexpr std::uint8_t End[] = {Marker, EndOfImage};
    if (!counter_ || bytes_.size() < sizeof End || !std::equal(std::begin(End), std::end(End), bytes_.end() - 2)) {
        return Status::GenericError;
    }
    const std::size_t end = bytes_.size() - sizeof End;
    if (!recoder_) {
        Count(end, true);
        if (const Status status = ChooseCodes(); status != Status::Ok) {
            return status;
        }
    }
    if (const Status status = Recode(end, true); status != Status::Ok) {
        return status;
    }
    writer_.Finish();
    writer_.Bytes().insert(writer_.Bytes().end(), std::begin(End), std::end(End));
    return file_.Append(writer_.Bytes().data(), writer_.Bytes().size());
}

// Takes the segments that are there as a whole, up to the scan's header.
Status JpegCompactor::TakeSegments() {
    std::size_t taken = 0;
    Status status = Status::Ok;
    while (status == Status::Ok && !counter_) {
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
        if (number >= MostTables || contents.size() < CountBytes + symbols) {
            return Status::GenericError;
        }
        code.symbols.assign(contents.begin() + CountBytes,
                            contents.begin() + static_cast<std::ptrdiff_t>(CountBytes + symbols));
        codes_.resize(std::max(codes_.size(), number + 1));
        const bool isOfFirst = contents[0] >> 4 == 0;
        (isOfFirst ? codes_[number].first : codes_[number].others) = std::move(code);
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
        const std::size_t pair = contents[2 + 2 * i] & 15;
        if (contents[1 + 2 * i] != component.name || pair >= codes_.size()) {
            return Status::GenericError;
        }
        layout.pairs.insert(layout.pairs.end(), component.columns * component.rows, pair);
        columns = std::max(columns, component.columns);
        rows = std::max(rows, component.rows);
    }
    const auto unitsOf = [](std::size_t length, std::size_t side) { return (length + side - 1) / side; };
    layout.units = std::uint64_t{unitsOf(width_, columns * BlockSide)} * unitsOf(height_, rows * BlockSide);
    frequencies_.resize(codes_.size());
    counter_.emplace(layout, codes_);
    layout_ = std::move(layout);
    return Status::Ok;
}

void JpegCompactor::Count(std::size_t end, bool areAll) {
    auto* const pairs = frequencies_.data();
    counted_ += counter_->Read(std::span<const std::uint8_t>(bytes_).first(end).subspan(counted_), areAll,
                               [pairs](const ScanSymbol& symbol) {
                                   auto& pair = pairs[symbol.pair];
                                   ++(symbol.isFirst ? pair.first : pair.others)[symbol.value];
                               });
}

// Writes the tables and the scan's header.
Status JpegCompactor::ChooseCodes() {
    constexpr std::size_t OthersClass = 16;
    std::vector<std::uint8_t> tables(HeadBytes);
    for (std::size_t i = 0; i < codes_.size(); ++i) {
        const TablePair<HuffmanCode> codes{MakeHuffmanCode(frequencies_[i].first),
                                           MakeHuffmanCode(frequencies_[i].others)};
        AppendTable(tables, i, codes.first);
        AppendTable(tables, OthersClass | i, codes.others);
        symbolBits_.push_back({BitsOfSymbols(codes.first), BitsOfSymbols(codes.others)});
    }
    const std::size_t length = tables.size() - MarkerBytes;
    tables[0] = Marker;
    tables[1] = HuffmanTables;
    tables[2] = static_cast<std::uint8_t>(length >> 8);
    tables[3] = static_cast<std::uint8_t>(length);
    recoder_.emplace(layout_, codes_);
    if (const Status status = file_.Append(tables.data(), tables.size()); status != Status::Ok) {
        return status;
    }
    return file_.Append(scanHeader_.data(), scanHeader_.size());
}

Status JpegCompactor::Recode(std::size_t end, bool areAll) {
    const auto* const pairs = symbolBits_.data();
    const auto put = [this, pairs](const ScanSymbol& symbol) {
        const auto& pair = pairs[symbol.pair];
        const SymbolBits code = (symbol.isFirst ? pair.first : pair.others)[symbol.value];
        writer_.Put(std::uint32_t{code.bits} << symbol.BitCount() | symbol.bits, code.length + symbol.BitCount());
    };
    std::size_t done = 0;
    for (std::size_t stop = 0; stop < end;) {
        stop = std::min(end, stop + BytesAtOnce);
        done +=
            recoder_->Read(std::span<const std::uint8_t>(bytes_).first(stop).subspan(done), areAll && stop == end, put);
        if (const Status status = file_.Append(writer_.Bytes().data(), writer_.Bytes().size()); status != Status::Ok) {
            return status;
        }
        writer_.Bytes().clear();
    }
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(done));
    return counter_->IsSound() && recoder_->IsSound() ? Status::Ok : Status::GenericError;
}

} // namespace imaginglibrary
