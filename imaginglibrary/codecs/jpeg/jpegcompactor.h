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

// Libjpeg itself would keep the coefficients of the whole picture for that. This keeps the coded scan, which takes a
// twentieth, and no more than four megabytes of it: in longer ones the codes are the best for what these hold.
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
    void Count(std::size_t end, bool areAll);
    Status ChooseCodes();
    Status Recode(std::size_t end, bool areAll);

    OutputFile& file_;
    std::vector<std::uint8_t> bytes_; // that are still needed
    std::size_t counted_ = 0;         // of these

    std::size_t width_ = 0;
    std::size_t height_ = 0;
    std::vector<Component> components_;
    std::vector<TablePair<HuffmanCode>> codes_; // as libjpeg has them
    std::vector<std::uint8_t> scanHeader_;      // the whole segment, once it was there
    ScanLayout layout_;
    std::vector<TablePair<SymbolFrequencies>> frequencies_;
    std::optional<ScanReader> counter_; // from the scan's header on
    std::optional<ScanReader> recoder_; // reads the scan once more when the codes are chosen
    std::vector<TablePair<std::array<SymbolBits, 256>>> symbolBits_;
    ScanBitWriter writer_;
};

} // namespace imaginglibrary
