// What an operation is to do besides its work, and all that it knows when it has ended.
#pragma once

#include "base/geometry.h"
#include "imaging/memory.h"
#include "imaging/status.h"
#include "platform/text.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace lumbrix {

// The steps of an operation, in no particular order: where something came in between.
enum class Step {
    None,
    Names,    // blank names, unknown extensions, arguments that nothing can be made of
    Existing, // a destination that was not to be replaced
    Session,
    Encoder,
    Font,
    Load,
    LoadStamp,
    Measure,
    Make, // of a new bitmap
    Surface,
    Draw,
    DrawStamp,
    DrawText,
    Cut,
    Turn,
    LayOver, // a colour
    Property,
    Save,
};

struct Failure {
    Step step = Step::None;
    StatusValue status = Done;
};

struct Outcome {
    Failure first; // the first step whose status was not Ok
    Failure end;   // the step that ended the operation before its time
    bool isWritten = false;
    bool isDamaged = false; // not all of the source could be decoded
    bool isStampDamaged = false;
    bool isCompressionChosen = false; // of a file that was to be written
    PixelSize source;                 // in pixels, as far as the operation came to know it
    PixelSize result;
};

// As established: statuses are passed over, and sessions and handles left open, where these procedures have always done
// so. Truthful: the first failure ends the operation, and nothing is left open.
enum class Conduct { Established, Truthful };

// Told how many of all rows that an operation reads are done; false ends it with Aborted.
using Progress = std::function<bool(std::uint32_t rowsDone, std::uint32_t rows)>;

// How a file is to be encoded; what is not set is left to the imaging library.
struct Encoding {
    std::optional<std::int32_t> quality;     // of JPEG, 0 to 100
    std::optional<std::int32_t> compression; // a number of the imaging library's

    bool IsUsual() const { return !quality && !compression; }
};

// Takes the whole of what was to be a file; false where it does not.
using ByteTaker = std::function<bool(GrowingMemory& bytes)>;

struct Wishes {
    Conduct conduct = Conduct::Truthful;
    bool refusesDamage = false; // else a damaged picture is shown as far as it goes, where its format allows that
    bool keepsExisting = false; // a destination that is there is not replaced
    bool onlyShrinks = false;   // a resize does not enlarge: what is not larger keeps its size
    bool turnsUpright = false;  // the source is turned as its stored orientation says before all else, and that goes
    bool stripsMetadata = false;
    bool keepsProfile = false;               // of colours, where metadata are stripped
    std::optional<std::uint32_t> background; // 0xAARRGGBB: the picture is laid over it, which makes it opaque
    Encoding encoding;
    Progress progress;
    std::optional<MemoryBytes> input; // read in the place of the source file, whose name is for messages then
    TextEncoding names = TextEncoding::CodePage; // and of texts to be drawn
    ByteTaker output;                            // set: what is written goes there, and nothing to the destination file
};

inline const Wishes AsEstablished{.conduct = Conduct::Established};

} // namespace lumbrix
