// Counts calls on files and tells which of them fail; what takes the place of the system's asks here.
#include "tests/faults/faultyfiles.h"

#include <algorithm>
#include <atomic>

namespace tests {

bool lacksUnnamedFiles = false;

namespace {

constexpr int MostRecorded = 8192;

// Constant from the start, for files are opened and closed before any constructor has run. Threads are counted
// together; a fault is set while none of them works.
FileFault fault;
std::atomic<bool> isWatching{false};
std::atomic<bool> hasFailed{false};
std::atomic<int> counts[static_cast<int>(FileCall::Kinds)];
std::atomic<int> recordedCount{0};
std::atomic<FileCall> recorded[MostRecorded];

void Record(FileCall call) {
    if (const int place = recordedCount++; place < MostRecorded) {
        recorded[place] = call;
    }
}

// How far the number of a call is beyond that of the first to fail; less than 0 for one that works.
int PlaceOf(FileCall call) {
    if (!isWatching) {
        return -1;
    }
    Record(call);
    const int number = ++counts[static_cast<int>(call)];
    return call == fault.call ? number - fault.number : -1;
}

bool DoesHalf() { return fault.failing == Failing::Halfway || fault.failing == Failing::Short; }

int ErrorAt(int place) {
    const bool lasts = fault.failing == Failing::Onwards || fault.failing == Failing::Halfway;
    const bool fails = (place == 0 && !DoesHalf()) || (place > 0 && lasts);
    hasFailed = hasFailed || fails;
    return fails ? fault.error : 0;
}

} // namespace

int ErrorOf(FileCall call) { return ErrorAt(PlaceOf(call)); }

WriteAllowance AllowanceFor(std::size_t count) {
    const int place = PlaceOf(FileCall::Write);
    const bool isHalf = place == 0 && DoesHalf();
    return {ErrorAt(place), isHalf ? (count + 1) / 2 : count};
}

void BeginFileFault(const FileFault& wanted) {
    isWatching = false;
    fault = wanted;
    hasFailed = false;
    recordedCount = 0;
    for (auto& count : counts) {
        count = 0;
    }
    isWatching = true;
}

bool EndFileFault() {
    isWatching = false;
    return hasFailed;
}

std::vector<FileCall> RecordedCalls() { return {recorded, recorded + std::min(recordedCount.load(), MostRecorded)}; }

} // namespace tests
