// What a fuzzer, or a replay of what it found, calls for each input.
#include "fuzz/support/entry.h"

#include "fuzz/support/choices.h"

#include <ctime>

namespace {

constexpr std::clock_t MostTime = 5 * CLOCKS_PER_SEC; // of the processor, for others may be at work

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::clock_t start = std::clock();
    fuzz::Take(bytes, count);
    fuzz::Require(std::clock() - start <= MostTime, "an input takes 5 seconds of a processor at most");
    return 0;
}
