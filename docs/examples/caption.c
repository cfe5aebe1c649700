/* Makes a small copy of a picture with a caption on it, and lists what the file tells about it.

   cc caption.c -llumbrix -o caption        (with the folders of lumbrix.h and of the library)
   ./caption photo.jpg small.png "By the lake" */
#include <lumbrix.h>

#include <stdio.h>

static int fail(const char* what, int result) {
    fprintf(stderr, "%s failed with %d\n", what, result);
    return 1;
}

int main(int count, char** words) {
    if (count != 4) {
        fprintf(stderr, "usage: %s PICTURE COPY.png CAPTION\n", words[0]);
        return 2;
    }
    LoadImagingLibrary();

    int32_t width = 0, height = 0;
    int32_t result = GetImageDimensions(words[1], &width, &height);
    if (result != 0)
        return fail("reading the picture", result);

    result = ResizeImage(words[1], "resized.png", 240);
    if (result != 0)
        return fail("resizing", result);

    /* 24 pixels high, bold, white (blue, green, red), a little translucent. */
    result = AnnotateImage("resized.png", words[2], 8, 8, words[3], "Arial", 24, 1, 0, 0, 0, 230, 255, 255, 255);
    if (result != 0)
        return fail("annotating", result);
    remove("resized.png");

    char *error = NULL, *properties = NULL;
    EnumerateImageProperties(words[1], &error, &properties);
    printf("%s is %d by %d pixels.\n%s\n", words[1], (int)width, (int)height, properties != NULL ? properties : "");
    lumbrix_free(properties);
    lumbrix_free(error);

    UnloadImagingLibrary();
    return 0;
}
