// The image data of PNG files, read back by zlib and by the rules of the standard.
#include "imaginglibrary/codecs/png/pngimagedata.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include <zlib.h>

namespace {

using namespace imaginglibrary;

using Row = std::vector<std::uint8_t>;

struct Written {
    std::vector<std::size_t> chunks; // their sizes
    Row stream;
    Status status = Status::Ok;

    // The filter of each row, once the stream has been read with its checksum.
    std::vector<int> Filters(std::size_t rowBytes, std::size_t rows) const {
        const Row bytes = Bytes(rowBytes, rows);
        std::vector<int> filters;
        for (std::size_t y = 0; y < rows; ++y) {
            filters.push_back(bytes.at(y * (1 + rowBytes)));
        }
        return filters;
    }

    Row Bytes(std::size_t rowBytes, std::size_t rows) const {
        Row bytes(rows * (1 + rowBytes) + 1);
        auto length = static_cast<uLongf>(bytes.size());
        EXPECT_EQ(uncompress(bytes.data(), &length, stream.data(), static_cast<uLong>(stream.size())), Z_OK);
        EXPECT_EQ(length, rows * (1 + rowBytes));
        return bytes;
    }

    // The rows as a reader has them.
    std::vector<Row> Rows(const PngRowForm& form, std::size_t count) const {
        const Row bytes = Bytes(form.rowBytes, count);
        std::vector<Row> rows;
        Row above(form.rowBytes);
        for (std::size_t y = 0; y < count; ++y) {
            const std::uint8_t* from = &bytes[y * (1 + form.rowBytes)];
            const int filter = *from++;
            Row row(from, from + form.rowBytes);
            for (std::size_t i = 0; i < row.size(); ++i) {
                const int a = i < form.pixelBytes ? 0 : row[i - form.pixelBytes];
                const int b = above[i];
                const int c = i < form.pixelBytes ? 0 : above[i - form.pixelBytes];
                const int p = a + b - c;
                const int paeth = std::abs(p - a) <= std::abs(p - b) && std::abs(p - a) <= std::abs(p - c) ? a
                                  : std::abs(p - b) <= std::abs(p - c)                                     ? b
                                                                                                           : c;
                const int foretold[] = {0, a, b, (a + b) / 2, paeth};
                row[i] = static_cast<std::uint8_t>(row[i] + foretold[filter]);
            }
            rows.push_back(row);
            above = row;
        }
        return rows;
    }
};

Written Write(const PngRowForm& form, const std::vector<Row>& rows, Status sinkStatus = Status::Ok) {
    Written written;
    PngImageData data(form, static_cast<std::uint32_t>(rows.size()), std::nullopt,
                      [&](std::span<const std::uint8_t> chunk) {
                          written.chunks.push_back(chunk.size());
                          written.stream.insert(written.stream.end(), chunk.begin(), chunk.end());
                          return sinkStatus;
                      });
    for (const Row& row : rows) {
        std::copy(row.begin(), row.end(), data.NextRow());
        if (written.status = data.EndRow(); written.status != Status::Ok) {
            return written;
        }
    }
    return written;
}

// Waves across and down, and a little noise.
std::vector<Row> Photograph(std::size_t rowBytes, std::size_t count) {
    std::mt19937 random(1);
    std::vector<double> across(rowBytes);
    for (std::size_t i = 0; i < rowBytes; ++i) {
        across[i] = 128 + 60 * std::sin(0.02 * static_cast<double>(i));
    }
    std::vector<Row> rows(count, Row(rowBytes));
    for (std::size_t y = 0; y < count; ++y) {
        const double down = 60 * std::cos(0.05 * static_cast<double>(y));
        for (std::size_t i = 0; i < rowBytes; ++i) {
            rows[y][i] = static_cast<std::uint8_t>(across[i] + down + random() % 4);
        }
    }
    return rows;
}

std::vector<Row> Flat(std::size_t rowBytes, std::size_t count) {
    std::vector<Row> rows(count, Row(rowBytes, 240));
    for (std::size_t y = 0; y < count; ++y) {
        if (y % 20 < 12) {
            for (std::size_t i = y % 3; i < rowBytes; i += 40) {
                std::fill_n(rows[y].begin() + static_cast<std::ptrdiff_t>(i), std::min<std::size_t>(9, rowBytes - i),
                            10);
            }
        }
    }
    return rows;
}

constexpr PngRowForm Colors{.rowBytes = 3000, .pixelBytes = 3};
constexpr std::size_t RowsOfABand = (1 << 19) / 3000;

TEST(PngImageDataOf, PhotographComesBackBandByBand) {
    for (const std::size_t count :
         {std::size_t{1}, std::size_t{2}, RowsOfABand - 1, RowsOfABand, RowsOfABand + 1, 4 * RowsOfABand + 5}) {
        const auto rows = Photograph(Colors.rowBytes, count);
        const Written written = Write(Colors, rows);
        EXPECT_EQ(written.status, Status::Ok);
        EXPECT_EQ(written.chunks.size(), (count + RowsOfABand - 1) / RowsOfABand);
        EXPECT_EQ(written.Rows(Colors, count), rows) << count;
    }
}

TEST(PngImageDataOf, PictureOfAllFormsComesBack) {
    for (const auto& [form, count] : {std::pair{PngRowForm{1, 1, true}, 300},
                                      {PngRowForm{2000, 1, true}, 300},
                                      {PngRowForm{4, 4, false}, 300},
                                      {PngRowForm{8000, 4, false}, 100},
                                      {PngRowForm{600000, 3, false}, 3}}) {
        const auto rowCount = static_cast<std::size_t>(count);
        for (const auto& rows : {Photograph(form.rowBytes, rowCount), Flat(form.rowBytes, rowCount)}) {
            EXPECT_EQ(Write(form, rows).Rows(form, rowCount), rows) << form.rowBytes;
        }
    }
}

TEST(PngImageDataOf, PhotographIsFiltered) {
    const std::size_t count = 2 * RowsOfABand;
    const auto rows = Photograph(Colors.rowBytes, count);
    const Written written = Write(Colors, rows);
    const auto filters = written.Filters(Colors.rowBytes, count);
    EXPECT_EQ(std::count(filters.begin(), filters.end(), 0), 0);
    EXPECT_LT(written.stream.size(), count * Colors.rowBytes / 2); // noise of four values
}

TEST(PngImageDataOf, FlatPictureIsNotFiltered) {
    const std::size_t count = 2 * RowsOfABand;
    const auto rows = Flat(Colors.rowBytes, count);
    const Written written = Write(Colors, rows);
    const auto filters = written.Filters(Colors.rowBytes, count);
    EXPECT_EQ(std::count(filters.begin(), filters.end(), 0), static_cast<std::ptrdiff_t>(count));
    // As small as in one piece, or nearly so.
    Row whole;
    for (const Row& row : rows) {
        whole.push_back(0);
        whole.insert(whole.end(), row.begin(), row.end());
    }
    Row one(compressBound(static_cast<uLong>(whole.size())));
    auto length = static_cast<uLongf>(one.size());
    compress2(one.data(), &length, whole.data(), static_cast<uLong>(whole.size()), 7);
    EXPECT_LT(written.stream.size(), length * 11 / 10 + 100);
}

TEST(PngImageDataOf, RowsWithNextToNothingInThemDoNotDecideForTheOthers) {
    // The rows in the middle of each band, which are tried out, are flat but for some borders.
    constexpr PngRowForm wide{.rowBytes = 9000, .pixelBytes = 3};
    constexpr std::size_t bandRows = (1 << 19) / 9000;
    std::vector<Row> rows = Flat(wide.rowBytes, 2 * bandRows);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        if (y % bandRows >= 24 && y % bandRows < 36) {
            std::fill(rows[y].begin(), rows[y].end(), 240);
            for (std::size_t border = 0; border < 9000; border += 1000) {
                std::fill_n(rows[y].begin() + static_cast<std::ptrdiff_t>(border), 6,
                            static_cast<std::uint8_t>(border / 50));
            }
        }
    }
    const auto filters = Write(wide, rows).Filters(wide.rowBytes, rows.size());
    EXPECT_EQ(std::count(filters.begin(), filters.end(), 0), static_cast<std::ptrdiff_t>(rows.size()));
}

TEST(PngImageDataOf, IndexesAreNeverFiltered) {
    const PngRowForm indexes{.rowBytes = 3000, .pixelBytes = 1, .isIndexed = true};
    const auto filters = Write(indexes, Photograph(3000, 200)).Filters(3000, 200);
    EXPECT_EQ(std::count(filters.begin(), filters.end(), 0), 200);
}

TEST(PngImageDataOf, PictureThatCannotBeWrittenEndsThere) {
    const Written written = Write(Colors, Photograph(Colors.rowBytes, 6 * RowsOfABand), Status::Win32Error);
    EXPECT_EQ(written.status, Status::Win32Error);
    EXPECT_EQ(written.chunks.size(), 1u);
}

// Each band may refer to the end of the one before, also where that is one row of less than a window.
TEST(PngImageDataOf, BandsReferToThoseBefore) {
    const PngRowForm wide{.rowBytes = 20000, .pixelBytes = 1, .isIndexed = true};
    std::mt19937 random(2);
    Row noise(wide.rowBytes);
    for (std::uint8_t& byte : noise) {
        byte = static_cast<std::uint8_t>(random());
    }
    const Written written = Write(wide, std::vector<Row>(200, noise));
    ASSERT_GT(written.chunks.size(), 3u);
    EXPECT_GT(written.chunks[0], 20000u);
    EXPECT_LT(written.chunks[1], 10000u);
}

} // namespace
