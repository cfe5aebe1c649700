/* Makes a small copy of a picture with a caption on it, and lists what the file tells about it.

   cc caption.c -llumbrix -o caption        (with the folders of lumbrix.h and of the library)
   ./caption photo.jpg small.png "By the lake" */
#include <lumbrix.h>

#include <stdio.h>

static int fail(const lumbrix_job* job) {
    fprintf(stderr, "%s (%s)\n", job->message, lumbrix_status_name(job->status));
    return 1;
}

int main(int count, char** words) {
    if (count != 4) {
        fprintf(stderr, "usage: %s PICTURE COPY.png CAPTION\n", words[0]);
        return 2;
    }
    LoadImagingLibrary();

    lumbrix_job job = LUMBRIX_JOB_INIT;
    if (lumbrix_resize(words[1], "resized.png", 240, &job) != LUMBRIX_OK)
        return fail(&job);
    if (job.damaged)
        fprintf(stderr, "%s\n", job.message);

    /* 24 pixels high, bold, white, a little translucent. */
    lumbrix_annotation caption = LUMBRIX_ANNOTATION_INIT;
    caption.x = 8;
    caption.y = 8;
    caption.text = words[3];
    caption.font = "Arial";
    caption.font_size = 24;
    caption.bold = 1;
    caption.alpha = 230;
    caption.red = caption.green = caption.blue = 255;
    int32_t status = lumbrix_annotate("resized.png", words[2], &caption, &job);
    remove("resized.png");
    if (status != LUMBRIX_OK)
        return fail(&job);

    lumbrix_read_size(words[1], &job);
    char* properties = NULL;
    printf("%s is %d by %d pixels.\n", words[1], (int)job.width, (int)job.height);
    if (lumbrix_read_properties(words[1], &properties, &job) != LUMBRIX_OK)
        return fail(&job);
    printf("%s\n", properties != NULL ? properties : "");
    lumbrix_free(properties);

    UnloadImagingLibrary();
    return 0;
}
