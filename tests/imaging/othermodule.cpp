// A second stand-in, told apart from the first by what it answers.
#include "imaging/gdiplus/flattypes.h"

#ifdef _WIN32
#define FAKE extern "C" __declspec(dllexport)
#else
#define FAKE extern "C" __attribute__((visibility("default")))
#endif

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageWidth(void*, std::uint32_t*) { return 77; }
