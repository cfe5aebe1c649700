// Calls of the system that work on files and fail when they are told to: they take the place of the C library's in a
// program that is linked with them.
#pragma once

#include <cstddef>
#include <vector>

namespace tests {

enum class FileCall {
    Open,
    Read, // on Linux only
    Write,
    Flush, // to the disk
    Name,  // a file that had none, or that was to go with its handle
    Close,
    Rename,
    Remove,
    Kinds
};

enum class Failing {
    Once,    // the call of that number alone
    Onwards, // it and all behind it
    Halfway, // a write does half of its work, and all behind it fail
    Short,   // a write does half of its work, and nothing fails
};

struct FileFault {
    FileCall call = FileCall::Kinds; // none
    int number = 0;                  // of the first call that fails, from 1
    int error = 0;                   // the system's number
    Failing failing = Failing::Once;
};

// From now on calls of all threads are counted anew, and fail as is said. A call that closes a file closes it and
// fails.
void BeginFileFault(const FileFault& fault);

// Ends that; true where a call has failed.
bool EndFileFault();

// The calls since the last beginning that reached the system or failed, in their order; at most some thousands.
std::vector<FileCall> RecordedCalls();

// A fault for as long as this lives.
class FaultyFiles {
  public:
    explicit FaultyFiles(const FileFault& fault = {}) { BeginFileFault(fault); }
    ~FaultyFiles() { EndFileFault(); }
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;
};

#ifdef _WIN32
// Has the calls of a library fail too, as long as it is loaded.
void TakeCallsOfLibrary(const char* name);
#endif

// On Linux: whether files have a name from the start, as on file systems that know no others.
extern bool lacksUnnamedFiles;

// What takes a call's place asks these: the error with which it fails, 0 for none, and how many bytes may be written.
int ErrorOf(FileCall call);
struct WriteAllowance {
    int error;
    std::size_t count;
};
WriteAllowance AllowanceFor(std::size_t count);

} // namespace tests
