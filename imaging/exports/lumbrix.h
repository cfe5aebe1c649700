/* Lumbrix: operations on image files, callable from C, C++ and whatever else can call a C library.

   Usage. Call LoadImagingLibrary once before the first operation and UnloadImagingLibrary behind the last. Every
   operation is one pass from file to file and returns when it is done. Link against lumbrix (liblumbrix.so on Linux,
   lumbrix.dll with its import library liblumbrix.dll.a on Windows), or look the names up at run time: they are
   exported undecorated, by lumbrix.dll and by lumbrix.exe. On Windows the procedures follow the __stdcall convention.

   Texts. A file name is NUL-terminated text in the system's 8-bit code page (UTF-8 on Linux). A null pointer counts as
   an empty name. A name of nothing but blanks counts as not given: the operations then return 0 and do nothing, so a
   caller that wants to know whether a file was written looks for the file.

   Results. 0: done. Otherwise:
     1 to 21   the imaging library's own status, passed up unchanged. The common ones: 1 the file is in use, read-only,
               or cannot be created (also: source and destination are the same file); 2 a size is not acceptable;
               3 the source is no picture that can be read, or is damaged, or memory ran out; 7 the system failed while
               writing, for instance on a full disk; 10 the source is not there.
     -1        an error inside this library.
     -16001    the imaging library refused a session.
     -16002    there is no encoder for the format, or no imaging library is loaded.
   A failed operation leaves a file that stood at the destination as it was.

   Threads. Several threads may run operations at the same time, on different files or the same sources.
   LoadImagingLibrary and UnloadImagingLibrary must not run while an operation does. */
#ifndef LUMBRIX_H
#define LUMBRIX_H

#include <stdint.h>

#ifdef _WIN32
#define LUMBRIX_CALL __stdcall
#else
#define LUMBRIX_CALL
#endif

#if !defined(LUMBRIX_BUILDS_LIBRARY)
#define LUMBRIX_EXPORT
#elif defined(_WIN32)
#define LUMBRIX_EXPORT __declspec(dllexport)
#else
#define LUMBRIX_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Loads the imaging library (gdiplus.dll on Windows; liblumbriximaging.so, which lies beside liblumbrix.so, on Linux)
   unless it is loaded. Whether that worked shows in what the operations return: -16002 where it did not. */
LUMBRIX_EXPORT void LUMBRIX_CALL LoadImagingLibrary(void);

/* Gives the imaging library back. The operations return -16002 from then on. */
LUMBRIX_EXPORT void LUMBRIX_CALL UnloadImagingLibrary(void);

/* Frees a text that this library allocated and handed out through a `char**`. Null is passed over. */
LUMBRIX_EXPORT void LUMBRIX_CALL lumbrix_free(void* text);

/* The version of this library as text, such as "0.1.0". Not to be freed. */
LUMBRIX_EXPORT const char* LUMBRIX_CALL lumbrix_version(void);

/* Converts the picture in `source` to the format that the name says, and writes it to `destination`, whatever that
   name's extension is. The size in pixels stays. Nothing else is changed: a format without alpha gets the picture over
   white, GIF gets a palette chosen for the picture. Of a file with several pictures the first one is taken. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToBmp(const char* source, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToGif(const char* source, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToJpeg(const char* source, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToPng(const char* source, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToTiff(const char* source, const char* destination);

/* An output type that is offered but has no format behind it: returns -16002 once a session could be started, and never
   writes a file. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToSgl(const char* source, const char* destination);

/* Writes a copy of the picture that is `height` pixels high to `destination`, in the format that the name says. The
   width keeps the proportions: source width * height / source height, rounded to the nearest whole number, a tie going
   to the even one. A height beyond the source's enlarges. Height 0 returns 0 and nothing is done; a negative one is
   refused with 2. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbBmp(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbGif(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbJpeg(const char* source, int32_t height,
                                                            const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbPng(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbTiff(const char* source, int32_t height,
                                                            const char* destination);

/* Reads the size of the picture in `file`, in pixels, without decoding it. Neither pointer may be null. Where nothing
   was read (a blank name, or any result but 0) both keep their values: preset them to tell. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL GetImageDimensions(const char* file, int32_t* width, int32_t* height);

#ifdef __cplusplus
}
#endif

#endif
