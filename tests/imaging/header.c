/* lumbrix.h must be plain C. */
#include "imaging/exports/lumbrix.h"

int32_t(LUMBRIX_CALL* const convertToPng)(const char*, const char*) = ConvertImageToPng;
