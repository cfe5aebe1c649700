// Which of the files dropped on a window are taken.
#pragma once

#include <cstdint>

namespace lumbrix {

// Whether a dropped path is passed over: a folder without any other attribute.
constexpr bool IsPlainFolder(std::uint32_t attributes) {
    constexpr std::uint32_t FolderAttribute = 0x10;
    return attributes == FolderAttribute;
}

} // namespace lumbrix
