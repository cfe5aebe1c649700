// Moving all rows of a picture from its reader to where they are wanted, with a thread at each end.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace imaginglibrary {

// As ForEachRow of rowpump.h: reads `count` rows of `rowBytes` and calls `use(y, row)` for each in order, until one of
// them fails. Rows are read here. Where there are many, and a processor to spare (threadbudget.h), they are used on
// another thread, which is a little behind and has ended when this returns; `use` and what it touches belong to it
// meanwhile. What it throws is thrown here.
Status PipeRows(Result<std::unique_ptr<RowReader>> rows, std::size_t rowBytes, std::uint32_t count,
                const std::function<Status(std::uint32_t y, std::uint8_t* row)>& use);

} // namespace imaginglibrary
