// Bands of PNG pictures: which filter and which effort they choose, by rules that are written down here a second time.
#include "imaginglibrary/codecs/png/pngband.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>

namespace {

using namespace imaginglibrary;

using Bytes = std::vector<std::uint8_t>;

// Rows of greys, none above the first.
struct Rows {
    std::size_t rowBytes;
    Bytes bytes;
    bool isIndexed = false;

    std::size_t Count() const { return bytes.size() / rowBytes; }
};

std::unique_ptr<PngBand> BandOf(const Rows& rows, std::optional<Effort> effort = {}) {
    auto band = std::make_unique<PngBand>(PngRowForm{.rowBytes = rows.rowBytes, .isIndexed = rows.isIndexed},
                                          rows.Count(), PngBand::Remains{Bytes(rows.rowBytes), {}});
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        std::copy_n(&rows.bytes[row * rows.rowBytes], rows.rowBytes, band->AddRow());
    }
    EXPECT_TRUE(band->IsFull());
    band->Prepare(Band::IsLast, effort);
    return band;
}

Bytes FilteredRows(const Rows& rows, PngFilter filter, std::size_t first, std::size_t count) {
    const Bytes zeros(rows.rowBytes);
    Bytes filtered;
    for (std::size_t row = first; row < first + count; ++row) {
        Bytes one(rows.rowBytes);
        const std::uint8_t* const above = row == 0 ? zeros.data() : &rows.bytes[(row - 1) * rows.rowBytes];
        FilterRow(filter, {&rows.bytes[row * rows.rowBytes], rows.rowBytes}, above, 1, one.data());
        filtered.push_back(static_cast<std::uint8_t>(filter));
        filtered.insert(filtered.end(), one.begin(), one.end());
    }
    return filtered;
}

std::size_t QuickSize(const Bytes& bytes) {
    Bytes data;
    Deflate(bytes, {}, Effort::Quick, Band::IsLast, data);
    return data.size();
}

struct Choice {
    PngFilter filter;
    Effort effort;
    bool operator<(const Choice& other) const {
        return std::tie(filter, effort) < std::tie(other.filter, other.effort);
    }
};

// The filter that leaves the least entropy in the middle row, if any does, where 32 KiB from there on become smaller by
// more than a fifth and by more than a fiftieth of what they were; and Thorough for what becomes less than a fifth.
Choice ChosenPlainly(const Rows& rows) {
    const std::size_t middle = rows.Count() / 2;
    const std::size_t count = std::clamp<std::size_t>(32768 / rows.rowBytes, 1, rows.Count() - middle);
    const std::size_t whole = count * rows.rowBytes;
    std::size_t size = QuickSize(FilteredRows(rows, PngFilter::None, middle, count));
    Choice choice{PngFilter::None, Effort::Quick};
    if (!rows.isIndexed) {
        const auto entropyOf = [&](PngFilter filter) {
            const Bytes row = FilteredRows(rows, filter, middle, 1);
            return EntropyOf({row.data() + 1, rows.rowBytes});
        };
        PngFilter least = PngFilter::None;
        for (const PngFilter filter : {PngFilter::Sub, PngFilter::Up, PngFilter::Average, PngFilter::Paeth}) {
            least = entropyOf(filter) < entropyOf(least) ? filter : least;
        }
        const std::size_t filtered = QuickSize(FilteredRows(rows, least, middle, count));
        if (least != PngFilter::None && filtered < size / 5 * 4 && size - filtered > whole / 50) {
            choice.filter = least;
            size = filtered;
        }
    }
    choice.effort = size < whole / 5 ? Effort::Thorough : Effort::Quick;
    return choice;
}

void ExpectChoice(const Rows& rows, const Choice& choice, const std::string& what) {
    const auto band = BandOf(rows);
    band->Do();
    EXPECT_EQ(band->GetStatus(), Status::Ok);
    Bytes data;
    Deflate(FilteredRows(rows, choice.filter, 0, rows.Count()), {}, choice.effort, Band::IsLast, data);
    EXPECT_EQ(band->Data(), data) << what;
}

// A slope with noise on `percent` of its pixels.
Rows Slope(std::size_t rowBytes, std::size_t count, unsigned percent, unsigned strength) {
    std::mt19937 random(percent * 1000 + strength);
    Rows rows{rowBytes, Bytes(rowBytes * count)};
    for (std::size_t i = 0; i < rows.bytes.size(); ++i) {
        const std::size_t x = i % rowBytes;
        const std::size_t y = i / rowBytes;
        const unsigned noise = random() % 100 < percent ? random() % strength : 0;
        rows.bytes[i] = static_cast<std::uint8_t>(x * 3 / 7 + y * 2 / 3 + noise);
    }
    return rows;
}

TEST(PngBand, ChoosesByWhatItsMiddleBecomes) {
    std::set<Choice> chosen;
    for (unsigned percent = 0; percent <= 100; percent += 2) {
        for (const unsigned strength : {2u, 5u, 40u, 256u}) {
            const Rows rows = Slope(300, 200, percent, strength);
            const Choice choice = ChosenPlainly(rows);
            chosen.insert(choice);
            ExpectChoice(rows, choice, std::to_string(percent) + " of a hundred up to " + std::to_string(strength));
        }
    }
    EXPECT_GE(chosen.size(), 4u);
}

// What is all but empty saves little by a filter, however large a part of it that is.
TEST(PngBand, FilterHasToSaveSomething) {
    std::set<PngFilter> chosen;
    for (std::size_t filled = 1; filled <= 40; ++filled) {
        std::mt19937 random(3);
        Rows rows{256, Bytes(std::size_t{256} * 256)};
        for (std::size_t row = 127; row <= 127 + filled; ++row) { // each adds the same noise to the one above
            for (std::size_t x = 0; x < 256; ++x) {
                rows.bytes[row * 256 + x] = row == 127
                                                ? static_cast<std::uint8_t>(random())
                                                : static_cast<std::uint8_t>(rows.bytes[(row - 1) * 256 + x] + x % 7);
            }
        }
        const Choice choice = ChosenPlainly(rows);
        chosen.insert(choice.filter);
        ExpectChoice(rows, choice, std::to_string(filled) + " rows");
    }
    EXPECT_GE(chosen.size(), 2u);
}

TEST(PngBand, IndexesAreNotFiltered) {
    Rows rows = Slope(300, 100, 0, 2);
    ExpectChoice(rows, ChosenPlainly(rows), "greys");
    rows.isIndexed = true;
    ExpectChoice(rows, ChosenPlainly(rows), "indexes");
    EXPECT_EQ(ChosenPlainly(rows).filter, PngFilter::None);
}

TEST(PngBand, EffortThatIsAskedForIsTaken) {
    const Rows rows = Slope(300, 100, 100, 256);
    const Choice choice = ChosenPlainly(rows);
    EXPECT_EQ(choice.effort, Effort::Quick);
    for (const Effort effort : {Effort::Quick, Effort::Thorough, Effort::Utmost}) {
        const auto band = BandOf(rows, effort);
        band->Do();
        Bytes data;
        Deflate(FilteredRows(rows, choice.filter, 0, rows.Count()), {}, effort, Band::IsLast, data);
        EXPECT_EQ(band->Data(), data);
    }
}

// The last row as it is, and the last 32 KiB of what the file has of the rows.
TEST(PngBand, LeavesTheNextWhatItsDataMayReferTo) {
    for (const std::size_t count : {3u, 109u, 110u, 200u}) {
        const Rows rows = Slope(300, count, 10, 5);
        const auto remains = BandOf(rows)->ForTheNext();
        EXPECT_EQ(remains.row, Bytes(rows.bytes.end() - 300, rows.bytes.end()));
        const Bytes whole = FilteredRows(rows, ChosenPlainly(rows).filter, 0, count);
        const std::size_t length = std::min<std::size_t>(whole.size(), 32768);
        EXPECT_EQ(remains.filtered, Bytes(whole.end() - static_cast<std::ptrdiff_t>(length), whole.end())) << count;
    }
}

} // namespace
