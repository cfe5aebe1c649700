// The function that a fuzzer, or a replay of what it found, calls for each input.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);
