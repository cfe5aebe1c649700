/* The header as a C compiler reads it, with every warning that it can give. */
#include "imaging/exports/lumbrix.h"

int32_t(LUMBRIX_CALL* const convertToPng)(const char*, const char*) = ConvertImageToPng;

/* As a caller begins. Gives back how large the job is. */
unsigned SizeOfJobInC(void);
unsigned SizeOfJobInC(void) {
    lumbrix_job job = LUMBRIX_JOB_INIT;
    lumbrix_tag_list tags = {0, 0};
    lumbrix_input input = LUMBRIX_INPUT_INIT;
    lumbrix_output output = LUMBRIX_OUTPUT_INIT;
    lumbrix_turn turn = LUMBRIX_TURN_INIT;
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    lumbrix_stamp_place place = LUMBRIX_STAMP_PLACE_INIT;
    int areWhole = input.size == sizeof input && output.size == sizeof output && turn.size == sizeof turn &&
                   annotation.size == sizeof annotation && place.size == sizeof place;
    return areWhole && tags.count == 0 && job.message[0] == 0 && job.input == 0 ? job.size : 0;
}
