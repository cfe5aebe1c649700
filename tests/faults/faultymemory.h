// Memory that runs out when it is told to: these take the place of the C library's allocations in a program that is
// linked with them.
#pragma once

#include "tests/faults/faultyfiles.h"

#include <string>
#include <vector>

namespace tests {

// From now on allocations of all threads are counted anew; that of this number fails, from 1, or it and all behind it.
void BeginMemoryFault(int number, Failing failing);

// Ends that; true where an allocation has failed.
bool EndMemoryFault();

// From now on what loaded libraries whose files have these words in their names allocate does not fail: for those that
// end the process over it.
void SpareLibraries(const std::vector<std::string>& names);

// Since the last beginning.
int CountedAllocations();

// Pieces of memory that were allocated and not yet freed, since the program began.
long LivingAllocations();

} // namespace tests
