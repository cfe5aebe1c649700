// One operation of the engine, as the command line orders it and hears of it.
#pragma once

#include "cli/options.h"
#include "imaging/exports/lumbrix.h"

#include <cstdint>
#include <string>

namespace lumbrix::cli {

class Progress;

// For every command that writes.
inline constexpr Option StrictOption{"--strict", nullptr, "refuse a damaged picture instead of showing what is left"};
inline constexpr Option QualityOption{"--quality", "N", "of JPEG, from 1 (small) to 100 (good) (75)"};
inline constexpr Option CompressionOption{"--compression",
                                          "WORD",
                                          "PNG: fast, default, small; TIFF: default, none, lzw, deflate, group4, jpeg",
                                          0,
                                          Offer::Nothing,
                                          "default fast small none lzw deflate group4 jpeg"};

// For every command that writes but those that write what is asked for alone: a date, an icon.
inline constexpr Option AutoOrientOption{"--auto-orient", nullptr,
                                         "first turn the picture as its EXIF orientation says"};
inline constexpr Option NoAutoOrientOption{
    "--no-auto-orient", nullptr, "do not (usual, but for thumb, for resize, for folder with a size, and for --strip)"};
inline constexpr Option BackgroundOption{"--background", "RRGGBB", "lay a picture with transparency over this colour"};
inline constexpr Option StripOption{"--strip", nullptr,
                                    "leave out all that is told of the picture: EXIF, profile and all"};
inline constexpr Option KeepProfileOption{"--keep-profile", nullptr, "with --strip: all but the colour profile"};

// Whether a word that stands for a file means the standard input or output.
inline bool IsStandardStream(const std::string& name) { return name == "-"; }

// Throws WrongUsage for a name that is empty or blank.
void RequireName(const std::string& file);

// Whether a command turns pictures as their EXIF orientation says where no option tells.
enum class Upright { WhereAsked, Usually };

// The operation ends early where the user wants the program to stop.
class Job {
  public:
    Job();
    explicit Job(const Arguments& arguments, Upright upright = Upright::WhereAsked);

    // Of a new job; null for the extension of the target.
    void SetFormat(const char* format) { job_.format = format; }
    void KeepExisting() { job_.keep_existing = 1; }
    void OnlyShrink() { job_.only_shrink = 1; }

    // From where the picture is read, and where it goes: "-" stands for the standard input and output. Gives back the
    // name to hand to the engine, which messages have too.
    std::string From(const std::string& source);
    std::string To(const std::string& target);

    // To the standard output.
    std::uintmax_t BytesWritten() const { return bytesWritten_; }

    // Tells of the rows that are done. The progress must live as long as the operations of this job and its copies.
    void ReportTo(Progress& progress) { job_.context = &progress; }

    // What the engine's procedures take; good for as long as this job, which they fill in.
    lumbrix_job* Get();

    // Throws the Failure that the engine tells of, unless an operation succeeded.
    void Expect(std::int32_t status) const;

    // Of a picture that was not whole; empty for any other.
    std::string Warning() const;

    // The same, and says on the error output that a picture was not whole.
    void ExpectOrWarn(std::int32_t status) const;

    std::int32_t Width() const { return job_.width; }
    std::int32_t Height() const { return job_.height; }

  private:
    lumbrix_job job_ = LUMBRIX_JOB_INIT;
    lumbrix_input input_ = LUMBRIX_INPUT_INIT;
    lumbrix_output output_ = LUMBRIX_OUTPUT_INIT;
    std::string background_; // empty for none
    bool readsStandardInput_ = false;
    bool writesStandardOutput_ = false;
    std::uintmax_t bytesWritten_ = 0;
};

} // namespace lumbrix::cli
