// What a fuzzer, or a replay of what it found, calls for each input.
#pragma once

#include <cstddef>
#include <cstdint>

// Hands the input to the target, and ends the process where that took too much of a processor's time.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace fuzz {

// What the target does with an input.
void Take(const std::uint8_t* bytes, std::size_t count);

} // namespace fuzz
