// The numbers of the errors that tests have the system make.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#endif

namespace tests {

#ifdef _WIN32
inline constexpr int DiskFullError = ERROR_DISK_FULL;
inline constexpr int TooManyFilesError = ERROR_TOO_MANY_OPEN_FILES;
#else
inline constexpr int DiskFullError = ENOSPC;
inline constexpr int TooManyFilesError = EMFILE;
#endif

} // namespace tests
