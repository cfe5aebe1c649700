// Moving all rows of a picture from its reader to where they are wanted.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace imaginglibrary {

// Reads `count` rows from the top, row y into the memory that `place(y)` gives, and calls `use(y, row)` behind each.
// The first status other than Ok ends it: that of opening, of reading or of using.
template <class Place, class Use>
Status PumpRows(Result<std::unique_ptr<RowReader>> rows, std::uint32_t count, Place place, Use use) {
    if (!rows.Ok()) {
        return rows.GetStatus();
    }
    for (std::uint32_t y = 0; y < count; ++y) {
        std::uint8_t* const row = place(y);
        Status status = (*rows)->ReadRow(row);
        if (status == Status::Ok) {
            status = use(y, row);
        }
        if (status != Status::Ok) {
            return status;
        }
    }
    return Status::Ok;
}

// The same for rows that are only wanted in memory.
template <class Place> Status ReadRowsInto(Result<std::unique_ptr<RowReader>> rows, std::uint32_t count, Place place) {
    return PumpRows(std::move(rows), count, place, [](std::uint32_t, std::uint8_t*) { return Status::Ok; });
}

// The same for rows of `rowBytes` that are done with once `use(y, row)` returns.
template <class Use>
Status ForEachRow(Result<std::unique_ptr<RowReader>> rows, std::size_t rowBytes, std::uint32_t count, Use use) {
    std::vector<std::uint8_t> row(rowBytes);
    return PumpRows(
        std::move(rows), count, [&](std::uint32_t) { return row.data(); }, use);
}

} // namespace imaginglibrary
