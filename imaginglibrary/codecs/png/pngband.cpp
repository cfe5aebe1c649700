// A band of a PNG picture: some rows, filtered and compressed on their own.
#include "imaginglibrary/codecs/png/pngband.h"

#include <algorithm>
#include <new>

#include <zlib.h>

namespace imaginglibrary {

namespace {

constexpr PngFilter RealFilters[] = {PngFilter::Sub, PngFilter::Up, PngFilter::Average, PngFilter::Paeth};

// So much of a band is tried out.
constexpr std::size_t TrialBytes = 1 << 15;

// A trial shows too little of how rows repeat themselves without a filter, so a filter has to be that much better; and
// it has to save something, for where the trial is all but empty it says nothing about what is not.
constexpr bool IsWorthAFilter(std::size_t filteredSize, std::size_t size, std::size_t trialBytes) {
    return filteredSize < size / 5 * 4 && size - filteredSize > trialBytes / 50;
}

// What becomes less than this part of its size repeats itself so often that looking closer costs little and saves much.
constexpr std::size_t OftenRepeated = 5;

std::size_t TrialSize(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::uint8_t> data;
    Deflate(bytes, {}, Effort::Quick, Band::IsLast, data);
    return data.size();
}

} // namespace

PngBand::PngBand(const PngRowForm& form, std::size_t rows, Remains before)
    : form_(form), before_(std::move(before)), rows_(rows * form.rowBytes) {}

std::uint8_t* PngBand::AddRow() { return &rows_[rowCount_++ * form_.rowBytes]; }

void PngBand::Prepare(Band band, std::optional<Effort> effort) {
    band_ = band;
    choice_ = Choose();
    choice_.effort = effort.value_or(choice_.effort);
}

PngBand::Remains PngBand::ForTheNext() const {
    const std::uint8_t* const last = Row(rowCount_ - 1);
    const std::size_t rows = std::min(DeflateWindow / (1 + form_.rowBytes) + 1, rowCount_);
    std::vector<std::uint8_t> filtered = Filtered(choice_.filter, rowCount_ - rows, rows);
    if (filtered.size() > DeflateWindow) {
        filtered.erase(filtered.begin(), filtered.end() - DeflateWindow);
    }
    return {{last, last + form_.rowBytes}, std::move(filtered)};
}

void PngBand::Do() noexcept {
    try {
        Compress();
    } catch (const std::bad_alloc&) {
        status_ = Status::OutOfMemory;
    }
}

void PngBand::Compress() {
    const std::vector<std::uint8_t> filtered = Filtered(choice_.filter, 0, rowCount_);
    rows_ = {}; // its memory is needed no longer
    checksum_ = static_cast<std::uint32_t>(adler32_z(adler32_z(0, nullptr, 0), filtered.data(), filtered.size()));
    Deflate(filtered, before_.filtered, choice_.effort, band_, data_);
}

PngBand::Choice PngBand::Choose() const {
    const std::size_t middle = rowCount_ / 2;
    const std::size_t trialRows = std::clamp<std::size_t>(TrialBytes / form_.rowBytes, 1, rowCount_ - middle);
    const auto sizeWith = [&](PngFilter filter) { return TrialSize(Filtered(filter, middle, trialRows)); };
    Choice choice;
    std::size_t size = sizeWith(PngFilter::None);
    if (const PngFilter filter = LeastEntropyFilter(middle); filter != PngFilter::None) {
        const std::size_t filteredSize = sizeWith(filter);
        if (IsWorthAFilter(filteredSize, size, trialRows * form_.rowBytes)) {
            choice.filter = filter;
            size = filteredSize;
        }
    }
    if (size < trialRows * form_.rowBytes / OftenRepeated) {
        choice.effort = Effort::Thorough;
    }
    return choice;
}

PngFilter PngBand::LeastEntropyFilter(std::size_t row) const {
    if (form_.isIndexed) {
        return PngFilter::None;
    }
    std::vector<std::uint8_t> filtered(form_.rowBytes);
    const auto entropyWith = [&](PngFilter filter) {
        FilterRow(filter, {Row(row), form_.rowBytes}, RowAbove(row), form_.pixelBytes, filtered.data());
        return EntropyOf(filtered);
    };
    PngFilter least = PngFilter::None;
    double leastEntropy = EntropyOf({Row(row), form_.rowBytes});
    for (const PngFilter filter : RealFilters) {
        if (const double entropy = entropyWith(filter); entropy < leastEntropy) {
            least = filter;
            leastEntropy = entropy;
        }
    }
    return least;
}

// As they stand in the file, each behind the number of the filter.
std::vector<std::uint8_t> PngBand::Filtered(PngFilter filter, std::size_t first, std::size_t count) const {
    std::vector<std::uint8_t> filtered(count * (1 + form_.rowBytes));
    std::uint8_t* to = filtered.data();
    for (std::size_t row = first; row < first + count; ++row) {
        *to++ = static_cast<std::uint8_t>(filter);
        FilterRow(filter, {Row(row), form_.rowBytes}, RowAbove(row), form_.pixelBytes, to);
        to += form_.rowBytes;
    }
    return filtered;
}

} // namespace imaginglibrary
