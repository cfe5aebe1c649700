// Makes the JPEG files that libjpeg writes row by row smaller: their symbols get the codes that are best for them.
#pragma once

#include "imaginglibrary/codecs/jpeg/jpegscan.h"
#include "imaginglibrary/files/outputfile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace imaginglibrary {

// Libjpeg itself would keep the coefficients of the whole picture for that. This keeps the symbols of the coded scan,
// of which there are few, and no more than a quarter of a million: in longer scans the codes are the best for these.
//
// For files of one baseline scan with all components and without restart markers.
class JpegCompactor {
  public:
    explicit JpegCompactor(OutputFile& file) : file_(file) {}

    // The next bytes of the file as libjpeg has it. GenericError where that is not of the kind above.
    Status Append(const std::uint8_t* bytes, std::size_t count);

    // Behind the last one.
    Status Finish();

  private:
    struct Component {
        std::uint8_t name;
        std::size_t columns; // of its blocks in an MCU
        std::size_t rows;
    };

    Status TakeSegments();
    Status TakeSegment(std::span<const std::uint8_t> segment);
    Status TakeTables(std::span<const std::uint8_t> contents);
    Status TakeFrame(std::span<const std::uint8_t> contents);
    Status TakeScanHeader(std::span<const std::uint8_t> contents);
    Status TakeScan(std::size_t end, bool areAll);
    Status ChooseCodes();
    void Put(ScanSymbol symbol);
    Status Flush();

    OutputFile& file_;
    std::vector<std::uint8_t> bytes_; // that are still needed

    std::size_t width_ = 0;
    std::size_t height_ = 0;
    std::vector<Component> components_;
    std::vector<HuffmanCode> tables_;      // as libjpeg has them: pairs for the first symbol and the others of a block
    std::vector<std::uint8_t> scanHeader_; // the whole segment, once it was there
    std::optional<ScanReader> reader_;     // from the scan's header on
    std::vector<SymbolFrequencies> frequencies_;
    std::vector<ScanSymbol> symbols_;                     // that wait for their codes
    std::vector<std::array<SymbolBits, 256>> symbolBits_; // empty until the codes are chosen
    ScanBitWriter writer_;
};

} // namespace imaginglibrary
