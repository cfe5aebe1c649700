/* The header as a C compiler reads it, with every warning that it can give. */
#include "imaging/exports/lumbrix.h"

int32_t(LUMBRIX_CALL* const convertToPng)(const char*, const char*) = ConvertImageToPng;

/* As a caller begins. Gives back how large the job is. */
unsigned SizeOfJobInC(void);
unsigned SizeOfJobInC(void) {
    lumbrix_job job = LUMBRIX_JOB_INIT;
    lumbrix_tag_list tags = {0, 0};
    return tags.count == 0 && job.message[0] == 0 ? job.size : 0;
}
