/* Lumbrix: operations on image files, callable from C, C++ and whatever else can call a C library.

   Usage. Call LoadImagingLibrary once before the first operation and UnloadImagingLibrary behind the last. Every
   operation comes in two forms: under a name with the prefix lumbrix_, which tells truthfully what happened and is the
   one for new programs, and under an older name, which passes over much, for programs that know it. Each is one pass
   from file to file and returns when it is done. Link against lumbrix (liblumbrix.so on Linux, lumbrix.dll with its
   import library liblumbrix.dll.a on Windows), or look the names up at run time: they are exported undecorated, by
   lumbrix.dll and by lumbrix.exe. On Windows the procedures follow the __stdcall convention.

   From lumbrix.exe. A program that is loaded as a library hands every name on to lumbrix.dll, which Windows looks for
   where the calling program lies, not beside lumbrix.exe. A caller in another folder first loads lumbrix.dll by its
   full path, with LoadLibrary; the names of lumbrix.exe lead there from then on. Until then GetProcAddress gives null
   and the error 127.

   Texts. A file name is NUL-terminated text in the system's 8-bit code page (UTF-8 on Linux; on Windows with
   lumbrix_job.utf8, which reaches names that the code page has no letters for). A null pointer counts as
   an empty name. A name of nothing but blanks counts as not given. A text that comes back is memory of this library, to
   be given back with lumbrix_free; a `char**` may point to a null pointer, which counts as an empty text, or to a text
   that this library handed out.

   Results. LUMBRIX_OK, 0, for done; otherwise one of enum lumbrix_status. A failed operation leaves a file that stood
   at the destination as it was.

   Threads. Several threads may run operations at the same time, on different files or the same sources.
   LoadImagingLibrary and UnloadImagingLibrary may be called by several at the same time too, but the unload that really
   unloads must not run while an operation does.

   Null. A pointer to what a procedure cannot do without may be null all the same: the result is
   LUMBRIX_INVALID_PARAMETER then, where nothing else is said, and nothing is done. */
#ifndef LUMBRIX_H
#define LUMBRIX_H

#include <stddef.h>
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

/* The version that this header belongs to; lumbrix_version_number tells that of the library that runs. */
#define LUMBRIX_VERSION_MAJOR 1
#define LUMBRIX_VERSION_MINOR 5
#define LUMBRIX_VERSION_PATCH 0
#define LUMBRIX_VERSION_TEXT "1.5.0"

/* Versions as numbers that can be compared: 1.5.0 is 1005000. */
#define LUMBRIX_VERSION_OF(major, minor, patch) (((major)*1000u + (minor)) * 1000u + (patch))
#define LUMBRIX_VERSION LUMBRIX_VERSION_OF(LUMBRIX_VERSION_MAJOR, LUMBRIX_VERSION_MINOR, LUMBRIX_VERSION_PATCH)

/* Loads the imaging library unless it is loaded: gdiplus.dll on Windows; on Linux liblumbriximaging.so, which lies
   beside liblumbrix.so or in the folder lumbrix there. Whether that worked shows in what the operations return:
   LUMBRIX_NO_LIBRARY where it did not, of the older procedures -16002. Loads are counted, so several parts of a program
   may each load the library and unload it without knowing of each other. */
LUMBRIX_EXPORT void LUMBRIX_CALL LoadImagingLibrary(void);

/* Gives the imaging library back. The call that answers the first load really unloads it: the operations return
   LUMBRIX_NO_LIBRARY (-16002 the older ones) from then on, and whatever the older procedures left open is closed. A
   call too many does nothing. */
LUMBRIX_EXPORT void LUMBRIX_CALL UnloadImagingLibrary(void);

/* What the procedures return. The positive ones are the imaging library's own, passed up unchanged; those that it gives
   here are explained. */
enum lumbrix_status {
    LUMBRIX_OK = 0,
    LUMBRIX_GENERIC_ERROR = 1, /* a file is in use, read-only, or cannot be created; source and destination are one */
    LUMBRIX_INVALID_PARAMETER = 2, /* a size or a word is not acceptable */
    LUMBRIX_OUT_OF_MEMORY = 3,     /* no picture that can be read, or a damaged one, or memory ran out */
    LUMBRIX_OBJECT_BUSY = 4,
    LUMBRIX_INSUFFICIENT_BUFFER = 5,
    LUMBRIX_NOT_IMPLEMENTED = 6,
    LUMBRIX_WIN32_ERROR = 7, /* the system failed while writing, for instance on a full disk; or a callback failed */
    LUMBRIX_WRONG_STATE = 8,
    LUMBRIX_ABORTED = 9,         /* lumbrix_job.progress returned 0 */
    LUMBRIX_FILE_NOT_FOUND = 10, /* the source is not there */
    LUMBRIX_VALUE_OVERFLOW = 11,
    LUMBRIX_ACCESS_DENIED = 12,
    LUMBRIX_UNKNOWN_IMAGE_FORMAT = 13,
    LUMBRIX_FONT_FAMILY_NOT_FOUND = 14, /* the font is not installed */
    LUMBRIX_FONT_STYLE_NOT_FOUND = 15,
    LUMBRIX_NOT_TRUE_TYPE_FONT = 16,
    LUMBRIX_UNSUPPORTED_GDIPLUS_VERSION = 17,
    LUMBRIX_GDIPLUS_NOT_INITIALIZED = 18,
    LUMBRIX_PROPERTY_NOT_FOUND = 19, /* the picture has no date */
    LUMBRIX_PROPERTY_NOT_SUPPORTED = 20,
    LUMBRIX_PROFILE_NOT_FOUND = 21,
    LUMBRIX_REFUSED = -1, /* the rectangle does not lie within the picture; of the older procedures: a blank name,
                             an unknown extension, a source that did not load, a size that cannot be; also an
                             error inside this library */
    LUMBRIX_NO_SESSION = -16001,   /* the imaging library refused a session */
    LUMBRIX_NO_ENCODER = -16002,   /* nothing can be written in the format; of the older procedures: or there is no
                                      imaging library */
    LUMBRIX_BAD_NAME = -16003,     /* a blank name, or a destination whose extension names no format */
    LUMBRIX_NOT_LOADED = -16004,   /* an input picture did not load */
    LUMBRIX_NO_LIBRARY = -16005,   /* no imaging library is loaded */
    LUMBRIX_ALREADY_THERE = -16006 /* lumbrix_job.keep_existing was set, and the destination is there */
};

/* The name of a status, such as "FileNotFound"; "Unknown" for a number that is none. Not to be freed. */
LUMBRIX_EXPORT const char* LUMBRIX_CALL lumbrix_status_name(int32_t status);

/* Frees what this library allocated and handed out: a text, the bytes of a lumbrix_output, a list of tags. Null is
   passed over. */
LUMBRIX_EXPORT void LUMBRIX_CALL lumbrix_free(void* memory);

/* The version of this library as text, such as "1.5.0", not to be freed, and as a number that grows with it:
   LUMBRIX_VERSION of the header that it was built with. */
LUMBRIX_EXPORT const char* LUMBRIX_CALL lumbrix_version(void);
LUMBRIX_EXPORT uint32_t LUMBRIX_CALL lumbrix_version_number(void);

/* ---- The truthful procedures ---- */

/* Told how far an operation is: `rows_done` of all `rows` that it has to read. Called on the thread of the operation,
   at least a hundred times for a large picture. 0 ends the operation with LUMBRIX_ABORTED, anything else lets it go on.
   Must not call this library, nor leave by an exception or a jump. */
typedef int32_t(LUMBRIX_CALL* lumbrix_progress)(void* context, uint32_t rows_done, uint32_t rows);

/* Puts up to `count` bytes into `buffer` and returns how many: 0 only at the end, less than 0 where it failed. */
typedef int32_t(LUMBRIX_CALL* lumbrix_reader)(void* context, void* buffer, uint32_t count);

/* Takes all of these bytes. 0 where it failed, anything else for done. */
typedef int32_t(LUMBRIX_CALL* lumbrix_writer)(void* context, const void* bytes, uint32_t count);

/* What is read in the place of a source file: bytes in memory, which stay the caller's and must not change meanwhile,
   or what a callback gives. Begin with LUMBRIX_INPUT_INIT. A callback is called on the thread of the operation, and
   read to its end, into memory, before the operation begins: 1 GiB at most, 512 MiB in a 32-bit process, beyond which
   the result is LUMBRIX_OUT_OF_MEMORY. Where it fails that is LUMBRIX_WIN32_ERROR. */
typedef struct lumbrix_input {
    uint32_t size;       /* of this struct, in bytes */
    const void* data;    /* the bytes of a picture file; passed over where there is a callback */
    size_t length;       /* how many */
    lumbrix_reader read; /* null for none */
    void* context;       /* handed to it */
} lumbrix_input;

#define LUMBRIX_INPUT_INIT                                                                                             \
    { sizeof(lumbrix_input), 0, 0, 0, 0 }

/* Where a picture is written in the place of a destination file. Begin with LUMBRIX_OUTPUT_INIT. Nothing comes here of
   a picture that could not be written whole: a callback is called once the whole of it lies in memory, with one piece
   behind the other, on the thread of the operation. Where it fails the result is LUMBRIX_WIN32_ERROR, and it is not
   called again. */
typedef struct lumbrix_output {
    uint32_t size;        /* of this struct, in bytes */
    lumbrix_writer write; /* null: the bytes are gathered in `data` */
    void* context;        /* handed to it */
    void* data;    /* the bytes, to be given back with lumbrix_free. What stands here before a call must be null */
    size_t length; /* or come from an earlier one: it is given back where new bytes come, and else stays */
} lumbrix_output;

#define LUMBRIX_OUTPUT_INIT                                                                                            \
    { sizeof(lumbrix_output), 0, 0, 0, 0 }

/* How an operation is to be done, and what came of it. Begin with LUMBRIX_JOB_INIT, change what you want otherwise, and
   use it for one call at a time; for further calls it may be used again as it is. */
typedef struct lumbrix_job {
    uint32_t size; /* of this struct, in bytes, so that a later version knows what the caller has */

    /* To be done. */
    const char* format;        /* of the file to write: "bmp", "jpg", "gif", "tiff" or "png"; null: by its extension */
    int32_t strict;            /* not 0: refuse a damaged picture. Else a damaged JPEG is shown as far as it goes, the
                                  rest grey, and so are run-length coded BMP and GIF whose data end early, the rest
                                  in one colour or transparent. Other damage is refused anyway */
    int32_t keep_existing;     /* not 0: do not replace a destination that is there */
    int32_t only_shrink;       /* not 0: lumbrix_fit, lumbrix_resize and lumbrix_thumb do not enlarge. A picture keeps
                                  its size that is no higher and no wider than asked for, as far as that is asked for,
                                  and every picture at a percentage of 100 or more */
    int32_t auto_orient;       /* not 0: the picture is turned as its EXIF orientation (1 to 8) says before all else,
                                  and the orientation is taken out, also of XMP (tiff:Orientation), so that nobody
                                  turns it again. Heights, rectangles and places are those of the turned picture.
                                  Without an orientation, and with another number, nothing is done. The platform's own
                                  imaging library on Windows leaves XMP as it is, and the sizes that EXIF tells */
    int32_t strip;             /* not 0: nothing is told of the picture any more: no EXIF, XMP, IPTC, image resources,
                                  comments, thumbnails, colour profile. The orientation goes too, so set auto_orient
                                  beside it unless pictures are to be shown as they lie. The resolution stays, and so
                                  does the date that lumbrix_date_stamp sets. Of the platform's own imaging library on
                                  Windows what it knows as properties is taken out */
    int32_t keep_profile;      /* not 0: strip leaves the colour profile (ICC) where the picture has one; without
                                  strip it is kept anyway. lumbrix_thumb keeps none */
    const char* background;    /* null for none, or "RRGGBB", six hexadecimal digits: the picture is laid over this
                                  colour before anything is drawn on it, and is opaque then, in any format. A picture
                                  without transparency stays as it is. Without a background, formats without alpha get
                                  the picture over white. Any other text is LUMBRIX_INVALID_PARAMETER. The platform's
                                  own imaging library on Windows cannot do it: LUMBRIX_NOT_IMPLEMENTED */
    const char* compression;   /* null or "default": what suits the picture. Of TIFF also "none", "lzw", "deflate",
                                  "group4" (for black and white only) and "jpeg" (not for alpha and palettes), of PNG
                                  "fast" and "small"; LUMBRIX_INVALID_PARAMETER for any other word, for another format
                                  and for a picture that it does not suit. The platform's own imaging library on
                                  Windows knows "none", "lzw" and "group4" only */
    int32_t quality;           /* of JPEG, also in TIFF: 1 (small) to 100 (good); 0: 75. Anything else is
                                  LUMBRIX_INVALID_PARAMETER. Other formats have none, and pass it over */
    lumbrix_progress progress; /* null for none. The platform's own imaging library on Windows never calls it */
    void* context;             /* handed to progress */

    /* What came of it; all of it is filled by every call. */
    int32_t status;     /* what the procedure returned */
    int32_t written;    /* 1 where the destination was written, else 0 */
    int32_t damaged;    /* 1 where a picture was seen to be damaged that is shown all the same, or, with strict, was
                           not written for that. Else 0, and always with the platform's own imaging library */
    int32_t width;      /* of the picture that was, or would have been, written, in pixels; of a procedure that only */
    int32_t height;     /* reads, of the picture that was read; 0 where it is not known */
    char message[1024]; /* one sentence that names file and cause; a damaged picture has one too; else empty. A name
                           that is too long is shortened in its middle. In the encoding of the names */

    /* To be done, in the place of files. */
    const lumbrix_input* input; /* null: the source is a file. Else its name is for messages only, and may be null */
    lumbrix_output* output;     /* null: the destination is a file. Else its name is for messages only, and may be null;
                                   `format` must be set (LUMBRIX_BAD_NAME otherwise; lumbrix_date_stamp and lumbrix_icon do
                                   without),     and keep_existing means nothing */

    int32_t utf8; /* not 0: names, the text and the font of an annotation, the name of a stamp and the message are UTF-8
                     instead of text in the system's 8-bit code page. On Linux they are that anyway. Dates and
                     properties are handed on as they stand in the file in any case */
} lumbrix_job;

#define LUMBRIX_JOB_INIT                                                                                               \
    { sizeof(lumbrix_job), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "", 0, 0, 0 }

/* Each of these returns a status, writes `destination` only if all went well, and replaces it in one step. Each takes
   its source from lumbrix_job.input and writes to lumbrix_job.output where these are set; a stamp is always a file. The
   source's properties (EXIF and the like) go along, but for lumbrix_thumb. Where the picture becomes another one, those
   that tell its size get the new one, and stored thumbnails go. A picture with a palette is drawn on as true colour.
   `job` may be null. */

/* The same picture in another format. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_convert(const char* source, const char* destination, lumbrix_job* job);

/* A small copy without properties that is `height` pixels high, as ConvertImageToThumbPng and its siblings make it. One
   at which no width is left is LUMBRIX_INVALID_PARAMETER. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_thumb(const char* source, const char* destination, int32_t height,
                                                  lumbrix_job* job);

/* A copy that is `height` pixels high; the width keeps the proportions, see ResizeImage, and is at least 1. The same as
   lumbrix_fit with a height alone. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_resize(const char* source, const char* destination, int32_t height,
                                                   lumbrix_job* job);

/* The size that a copy shall have: sides in pixels, or a percentage of both sides, such as 50 or 12.5. 0 is what is not
   asked for. Begin with LUMBRIX_FITTING_INIT. */
typedef struct lumbrix_fitting {
    uint32_t size; /* of this struct, in bytes */
    int32_t width;
    int32_t height;
    double percent;
} lumbrix_fitting;

#define LUMBRIX_FITTING_INIT                                                                                           \
    { sizeof(lumbrix_fitting), 0, 0, 0 }

/* A copy in another size, proportions kept: that wide, that high, the largest one that fits into a box of `width` by
   `height`, or `percent` of the picture's size. Numbers are rounded as by ResizeImage, to the nearest and at a tie to
   the even one; no side becomes less than 1 pixel. LUMBRIX_INVALID_PARAMETER where neither sides nor a percentage are
   asked for, or both, for a number below 0, for a percentage that is no number, and where the struct is left out. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_fit(const char* source, const char* destination,
                                                const lumbrix_fitting* fitting, lumbrix_job* job);

/* In pixels, from the top left corner of the picture. */
typedef struct lumbrix_rectangle {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} lumbrix_rectangle;

/* Cuts out a rectangle, which must lie within the picture. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_crop(const char* source, const char* destination,
                                                 const lumbrix_rectangle* rectangle, lumbrix_job* job);

/* The structs below begin with their size, so that a later version knows what the caller has: begin with their _INIT
   words, and change what you want otherwise. One that claims to be smaller than it is here is
   LUMBRIX_INVALID_PARAMETER. */

/* Turns by `angle` degrees clockwise, 0, 90, 180 or 270, and then flips: "H" (left to right), "V" (upside down), "HV"
   or "VH", in any letter case, or empty or null for not at all. A stored orientation is neither looked at nor changed,
   unless lumbrix_job.auto_orient has it done first. */
typedef struct lumbrix_turn {
    uint32_t size; /* of this struct, in bytes */
    int32_t angle;
    const char* flip;
} lumbrix_turn;

#define LUMBRIX_TURN_INIT                                                                                              \
    { sizeof(lumbrix_turn), 0, 0 }

/* Turns and flips. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_rotate(const char* source, const char* destination,
                                                   const lumbrix_turn* turn, lumbrix_job* job);

/* A text to write on a picture: see AnnotateImage for all of these. */
typedef struct lumbrix_annotation {
    uint32_t size; /* of this struct, in bytes */
    float x;       /* pixels */
    float y;
    const char* text;
    const char* font;
    int32_t font_size; /* pixels */
    int32_t bold;      /* the four styles are set where they are not 0 */
    int32_t italic;
    int32_t underline;
    int32_t strikeout;
    int32_t alpha; /* 1 to 255; anything else is opaque */
    int32_t red;   /* 0 to 255 */
    int32_t green;
    int32_t blue;
} lumbrix_annotation;

#define LUMBRIX_ANNOTATION_INIT                                                                                        \
    { sizeof(lumbrix_annotation), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 }

/* Writes a text on the picture, which is drawn over itself first, so that a translucent one becomes denser. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_annotate(const char* source, const char* destination,
                                                     const lumbrix_annotation* annotation, lumbrix_job* job);

/* A picture file to place on another, pixel for pixel, and where its top left corner goes, in pixels. */
typedef struct lumbrix_stamp_place {
    uint32_t size; /* of this struct, in bytes */
    const char* stamp;
    float x;
    float y;
} lumbrix_stamp_place;

#define LUMBRIX_STAMP_PLACE_INIT                                                                                       \
    { sizeof(lumbrix_stamp_place), 0, 0, 0 }

/* Stamps a picture on the picture, which is drawn over itself first. What falls outside is cut off. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_stamp(const char* source, const char* destination,
                                                  const lumbrix_stamp_place* place, lumbrix_job* job);

/* Writes a JPEG copy, whatever the extension and lumbrix_job.format, whose date property is `date` as it stands. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_date_stamp(const char* source, const char* destination, const char* date,
                                                       lumbrix_job* job);

/* Writes a Windows icon, whatever the extension and lumbrix_job.format: the picture in `count` squares whose sides in
   pixels `sizes` names, 1 to 256 and each once, in that order. Each square holds the whole picture in its proportions,
   centred, the rest is transparent. Those of up to 64 pixels are bitmaps with alpha and a mask, larger ones PNG. The
   job gets the size of the largest. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_icon(const char* source, const char* destination, const int32_t* sizes,
                                                 int32_t count, lumbrix_job* job);

/* The name that a stamped copy of a file has beside it: the file's up to its first dot, with "_stamped.jpg" behind. To
   be given back with lumbrix_free; null only where memory ran out. */
LUMBRIX_EXPORT char* LUMBRIX_CALL lumbrix_stamped_name(const char* file);

/* Reads the size into the job, that of the picture as it is stored, without decoding. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_read_size(const char* file, lumbrix_job* job);

/* Puts the date property, or the list of properties as EnumerateImageProperties writes it, into `text`, in the place of
   what stood there. LUMBRIX_PROPERTY_NOT_FOUND for a picture without a date; one without properties has an empty list.
 */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_read_date(const char* file, char** text, lumbrix_job* job);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL lumbrix_read_properties(const char* file, char** text, lumbrix_job* job);

/* ---- The older procedures ---- */

/* Several of these pass over what happens while they draw and save, and return 0 all the same, as said with each: a
   caller that wants to know whether a file was written looks for the file, or calls one of those above. Of a blank name
   the conversions say nothing either: they return 0 and do nothing. */

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
   refused with 2. Where no width is left, the imaging library chooses one, 120 pixels. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbBmp(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbGif(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbJpeg(const char* source, int32_t height,
                                                            const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbPng(const char* source, int32_t height, const char* destination);
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageToThumbTiff(const char* source, int32_t height,
                                                            const char* destination);

/* Reads the size of the picture in `file`, in pixels, without decoding it. Where nothing was read (a blank name, or any
 * result but 0) both keep their values: preset them to tell. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL GetImageDimensions(const char* file, int32_t* width, int32_t* height);

/* The operations below take the format from the destination's extension: .bmp, .jpg, .jpeg, .tmp (JPEG), .gif, .tif,
   .tiff or .png. .ico, .emf and .wmf are known but cannot be written: 0 is returned and there is no file. */

/* Writes a copy that is `height` pixels high; the width keeps the proportions (source width / source height as a 32-bit
   float, times `height`, rounded to the nearest whole number, a tie going to the even one). Shrinks and enlarges. The
   source's properties (EXIF and the like) go along unchanged, the stored width and height too. -1 for a blank name, an
   unknown extension, and a source that does not load or is damaged. Otherwise 0, whether a file was written or not;
   none is where `height` is not above 0. A source with a palette (GIF, grey JPEG, PNG and BMP of 8 bits or fewer) gives
   a file of the right size with nothing drawn on it. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ResizeImage(const char* source, const char* destination, int32_t height);

/* Cuts out the rectangle of `width` by `height` pixels whose top left corner is at (x, y), counted from the top left of
   the picture. The pixel format stays, and the properties go along. -1 for a blank name, an unknown extension, a source
   that does not load or is damaged, a width or height below 1 or beyond the picture's; 3 (or another status of the
   imaging library) where the rectangle runs over an edge. Otherwise 0, whether the save worked or not. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL CropImage(const char* source, const char* destination, int32_t x, int32_t y,
                                              int32_t width, int32_t height);

/* Turns by `angle` degrees clockwise, which must be 0, 90, 180 or 270, and then flips: `flip` is "H" (left to right),
   "V" (upside down), "HV" or "VH", in any letter case, or empty. With any other angle or flip word the picture is
   copied as it is. The properties go along; an orientation that is stored among them is neither looked at nor changed.
   -1 for a blank name or an unknown extension. Otherwise 0, whether a file was written or not. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL RotateImage(const char* source, const char* destination, int32_t angle,
                                                const char* flip);

/* Kept for old callers: draws nothing, for the name is handed to the imaging library in a form that it finds no file
   under. `context` is a device context (HDC) on Windows, null elsewhere; (x, y) in pixels. Returns 0. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL DisplayImage(const char* file, void* context, float x, float y);

/* Writes `text` on the picture (which is drawn over itself first, so that a translucent one becomes denser), with the
   top left corner of its box at (x, y) in pixels. A line feed (with or without a
   carriage return before it) begins a new line; lines are not wrapped. `font` is the name of an installed family, such
   as "Arial", and `size` its height in pixels; the four styles are set where they are not zero. `alpha` is 1 (faint) to
   255 (opaque), everything else counts as 255; `blue`, `green` and `red`, in this order, are 0 to 255. -16003 for a
   blank name or an unknown extension, -16004 for a source that does not load or is damaged. Otherwise 0, whether the
   save worked or not: a family that is not installed and a source with a palette give a copy without the text. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL AnnotateImage(const char* source, const char* destination, float x, float y,
                                                  const char* text, const char* font, int32_t size, int32_t bold,
                                                  int32_t italic, int32_t underline, int32_t strikeout, int32_t alpha,
                                                  int32_t blue, int32_t green, int32_t red);

/* Places the picture in `stamp` on the one in `source`, itself drawn over itself first, pixel for pixel, its top left
   corner at (x, y), blended by its own alpha; what falls outside is cut off. Results as for AnnotateImage; -16004 also
   for a stamp that does not load. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL StampImage(const char* source, const char* destination, float x, float y,
                                               const char* stamp);

/* Copies all properties from one image of the imaging library to another; both are handles of GDI+ images that the
   caller got from the same imaging library, the second by reference. Returns 0, or 2 where that reference is null. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL CopyImageProperties(void* source, void** destination);

/* An array of tags: `count` numbers from `tags` on, null where there are none. */
typedef struct lumbrix_tag_list {
    uint32_t* tags; /* memory of this library, to be given back with lumbrix_free */
    int32_t count;
} lumbrix_tag_list;

/* Fills `list` with the tags of an image's properties. `image` is a handle as for CopyImageProperties. What the list
   held before is given back; begin with {0, 0}. A null image leaves it as it is. Returns 0, or 2 for a null list. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL GetPropertyIdList(void* image, lumbrix_tag_list* list);

/* Appends a line for each property of a file to the text in `list`, separated by CR and LF: a label or the tag's
   decimal number, then, behind tabs, the value of a text, of a single 16-bit number, or the values of 32-bit numbers.
   Values of other kinds are not shown (in place of bytes one character may stand that means nothing). `error` becomes
   "Error initializing GDI+" where no session could be started, and is left as it is otherwise. Returns 0, or 2 where
   one of the two is null. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL EnumerateImageProperties(const char* file, char** error, char** list);

/* The text of the date property (EXIF DateTime), such as "2026:11:21 09:30:00"; empty where there is none or the file
   cannot be read. To be given back with lumbrix_free; null only where memory ran out. */
LUMBRIX_EXPORT char* LUMBRIX_CALL GetImageDateTime(const char* file);

/* Writes a JPEG copy of the picture whose date property is `date`, as it stands, beside the file: its name up to the
   first dot, with "_stamped.jpg" behind, replacing a file of that name. Folders end in a backslash here, on every
   system; a name without one writes to the current folder. Nothing is drawn on the picture. 0 also for a blank name and
   where no imaging library is loaded, -1 where the file does not load, else the status of setting the property. Whether
   the save worked is not told. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL DateStampImage(const char* file, const char* date);

/* Deletes the key at `path`, parts of it separated by backslashes, with its values; of the path 254 characters count.
   `root` points to what the key lies below: on Windows a root of the registry, such as 0x80000001
   for HKEY_CURRENT_USER, or another open key; on Linux the number of a root likewise (0x80000000 to 0x80000003 and
   0x80000005), of the user's settings in the file lumbrix/settings below $XDG_CONFIG_HOME, or ~/.config. No imaging
   library is needed. Returns the registry's status of the deletion, on both systems: 0 for done, 5 where there are keys
   below it, 87 for a null root; also 0 where there is no such key or it cannot be opened. On Linux 1013 where the file
   cannot be written. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL DELREGKEY(const uint32_t* root, const char* path);

/* Shell links: small files "NAME.lnk" that point to a program or another file. On Windows they are the shell's, and the
   calling thread must have called CoInitialize (or CoInitializeEx): without it nothing is written, read or found out.
   On Linux they are texts of our own that hold the same. No imaging library is needed.

   Folders go by the shell's numbers (CSIDL values). On Linux these are known: 0 and 16 the desktop, 5 documents, 8 what
   was used recently, 13 music, 14 videos, 39 pictures (all as user-dirs.dirs says, or below the user's own folder under
   their English names) and 40 the user's own. The path of a link is cut at 259 bytes. */

/* Writes the link `name`.lnk to the folder numbered `folder`, or to the current folder where that number is unknown, in
   the place of one that is there. It points to the file `target`, to be started with the command line `arguments` in
   `working_folder`, its window as `show_command` says (1 normal, 3 maximised, 7 minimised). `description` and
   `icon_file` are left out where they are empty; `icon_index` points to the number of the icon in that file, null for
   0. `unused` is not looked at. A null text counts as empty. Whether it worked is not told. */
LUMBRIX_EXPORT void LUMBRIX_CALL CreateLink(int32_t folder, const char* name, const char* target, const char* arguments,
                                            const char* working_folder, int32_t show_command, const char* description,
                                            const char* unused, const char* icon_file, const int32_t* icon_index);

/* Reads the link file `path`: what it points to, the folder and the command line that this is started in and with, the
   description, the file and the number of the icon, how its window is shown, and its hot key (the virtual key in the
   low byte, the keys held with it in the high one: 1 Shift, 2 Control, 4 Alt). Texts are up to 1024 bytes long, or 260
   on Windows before version 5. Each goes in the place of what stood there; a null pointer stands for a value that is
   not wanted. `unused` is not looked at. Returns 1. So it does where the file is not there or is no link: the texts are
   empty then. Returns 0, and changes nothing, for a blank path and where the shell gives no link; also where an error
   ended the reading, which a message box tells on Windows; what was read by then has been handed over. Each call keeps
   some memory until the process ends. */
LUMBRIX_EXPORT int32_t LUMBRIX_CALL GetShellLinkInfo(const char* path, char** target, char** working_folder,
                                                     char** arguments, char** description, char** icon_file,
                                                     int32_t* show_command, int32_t* icon_index, void* unused,
                                                     uint16_t* hot_key);

/* The path of the folder whose number `folder` points to, in general without a separator behind; empty where the number
   is unknown, and for a null pointer. To be given back with lumbrix_free; null only where memory ran out. */
LUMBRIX_EXPORT char* LUMBRIX_CALL GetDestinationFolder(const int32_t* folder);

/* Deletes the link `name`.lnk from the folder numbered `folder`, or from the current folder where that number is
   unknown. Where that fails, also because there is none, the path is added to CleanUp.txt in the folder of the running
   program; Lumbrix tries once more at its next start. */
LUMBRIX_EXPORT void LUMBRIX_CALL RemoveShortcut(const char* name, int32_t folder);

#ifdef __cplusplus
}
#endif

#endif
