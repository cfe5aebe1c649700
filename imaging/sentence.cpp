// Turns what an operation knows of itself into one sentence about a file and the cause.
#include "imaging/sentence.h"

#include "imaging/blank.h"
#include "platform/filefacts.h"

#include <optional>

namespace lumbrix {

namespace {

bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// A name as a sentence can hold it: of one that is too long the beginning and the end, whole characters of UTF-8.
std::string Shown(const std::string& name) {
    constexpr std::size_t Longest = 400;
    constexpr std::size_t Beginning = 150;
    constexpr std::size_t End = 240;
    if (name.size() <= Longest) {
        return name;
    }
    std::size_t firstPart = Beginning;
    while (ContinuesCharacter(name[firstPart]) && firstPart > 0) {
        --firstPart;
    }
    std::size_t lastPart = name.size() - End;
    while (lastPart < name.size() && ContinuesCharacter(name[lastPart])) {
        ++lastPart;
    }
    return name.substr(0, firstPart) + "..." + name.substr(lastPart);
}

std::string CannotRead(const std::string& file, const std::string& cause) {
    return "cannot read " + Shown(file) + ": " + cause;
}

std::string CannotWrite(const std::string& file, const std::string& cause) {
    return "cannot write " + Shown(file) + ": " + cause;
}

constexpr const char* TooManyFiles = "too many files are open at this moment";
constexpr const char* NotEnoughMemory = "there is not enough memory";

std::string TextOf(PixelSize size) { return std::to_string(size.width) + " x " + std::to_string(size.height); }

// Why a source cannot be read, judged by looking at it; nothing where nothing seems wrong.
std::optional<std::string> CauseInSource(StatusValue status, const std::string& source, TextEncoding encoding) {
    switch (KindOfFile(source, encoding)) {
    case FileKind::Missing:
        return "there is no such file";
    case FileKind::Folder:
        return "it is a folder";
    case FileKind::Other:
        return "it is not a regular file";
    case FileKind::Impossible:
        return "no file can have this name";
    case FileKind::Regular:
        break;
    }
    if (status == FileNotFound) {
        return "there is no such file";
    }
    if (AreTooManyFilesOpen()) {
        return TooManyFiles;
    }
    if (!CanReadFile(source, encoding)) {
        return "there is no permission to read it, or another program is writing it";
    }
    return std::nullopt;
}

enum class Origin { File, Memory };

std::string WhyNotRead(StatusValue status, const std::string& source, Origin origin, TextEncoding encoding) {
    const auto cause = origin == Origin::File ? CauseInSource(status, source, encoding) : std::nullopt;
    if (cause) {
        return CannotRead(source, *cause);
    }
    if (status == InvalidParameter) {
        return CannotRead(source, "its size is not acceptable, or it is not a picture that Lumbrix can read");
    }
    return CannotRead(source, "it is not a picture that Lumbrix can read, or it is damaged");
}

std::optional<std::string> CauseInTarget(const Subject& subject, StatusValue status) {
    if (!subject.isDestinationFile) {
        return status == Win32Error ? std::optional<std::string>("its bytes were not taken") : std::nullopt;
    }
    const std::string& target = subject.destination;
    const TextEncoding encoding = subject.encoding;
    const std::string folder = FullFolderOf(target, encoding);
    if (KindOfFile(folder, encoding) != FileKind::Folder) {
        return "the folder " + Shown(folder) + " does not exist";
    }
    if (AreTooManyFilesOpen()) {
        return TooManyFiles;
    }
    if (subject.isSourceFile && IsSameFile(subject.source, target, encoding)) {
        return "it is the source itself";
    }
    if (!subject.stamp.empty() && IsSameFile(subject.stamp, target, encoding)) {
        return "it is the stamp itself";
    }
    switch (KindOfFile(target, encoding)) {
    case FileKind::Folder:
        return "it is a folder";
    case FileKind::Other:
        return "it is not a regular file";
    case FileKind::Impossible:
        return "no file can have this name";
    case FileKind::Regular:
        if (!CanWriteFile(target, encoding)) {
            return "the file is not writable, or it is in use";
        }
        break;
    case FileKind::Missing:
        break;
    }
    if (!CanMakeFileIn(folder, encoding)) {
        return "the folder " + Shown(folder) + " is not writable";
    }
    return std::nullopt;
}

bool IsSameOrTurned(PixelSize size, PixelSize source) {
    return (size.width == source.width && size.height == source.height) ||
           (size.width == source.height && size.height == source.width);
}

// A file of the target's format cannot be as large. Where the picture has its size from the source, that is to blame.
std::string WhyTooLarge(const Outcome& outcome, const Subject& subject) {
    const std::string limit = TextOf(outcome.result) + " pixels are too many for a file of this format";
    return IsSameOrTurned(outcome.result, outcome.source)
               ? Shown(subject.source) + " is too large to become " + Shown(subject.destination) + ": " + limit
               : CannotWrite(subject.destination, limit);
}

std::string WhyNotWritten(const Outcome& outcome, const Subject& subject) {
    const StatusValue status = outcome.first.status;
    if (const auto cause = CauseInTarget(subject, status)) {
        return CannotWrite(subject.destination, *cause);
    }
    switch (status) {
    case OutOfMemory:
        return CannotRead(subject.source, "it is damaged, or there is not enough memory for it");
    case InvalidParameter:
        return outcome.isCompressionChosen
                   ? CannotWrite(subject.destination, "the picture is not of the kind that this compression is for")
                   : WhyTooLarge(outcome, subject);
    case Win32Error:
        return CannotWrite(subject.destination, "the system failed while writing; the disk may be full");
    default:
        return CannotWrite(subject.destination, std::string("the imaging library answered ") + StatusName(status));
    }
}

std::string WhyNotMade(StatusValue status, PixelSize size, const std::string& target) {
    return CannotWrite(target, status == OutOfMemory
                                   ? "there is not enough memory for a picture of " + TextOf(size) + " pixels"
                                   : "it would be " + TextOf(size) + " pixels, and no picture can have that size");
}

std::string WhyNotBegun(StatusValue status, const Subject& subject) {
    const std::string cause =
        status == NoLibrary ? "the imaging library could not be loaded" : "the imaging library refused to start";
    return subject.destination.empty() ? CannotRead(subject.source, cause) : CannotWrite(subject.destination, cause);
}

std::string WhyNoName(StatusValue status, const Subject& subject) {
    if (IsBlank(subject.source)) {
        return "no source was named";
    }
    if (status != BadName) {
        return "cannot change " + Shown(subject.source) + " as it was asked for: a number or a word is not acceptable";
    }
    return IsBlank(subject.destination)
               ? "no name was given for what " + Shown(subject.source) + " becomes"
               : CannotWrite(subject.destination, subject.isDestinationFile
                                                      ? "its format is not known; use .bmp, .jpg, .gif, .tif or .png"
                                                      : "its format must be named: bmp, jpg, gif, tif or png");
}

// Where the imaging library answers that it is out of memory it may mean a damaged picture, but not here.
bool LooksAtNoPicture(Step step) {
    return step == Step::Session || step == Step::Encoder || step == Step::Font || step == Step::Property;
}

std::string WhyNotDone(const Outcome& outcome, const Subject& subject) {
    const auto [step, status] = outcome.first;
    if (status == Aborted) {
        return CannotWrite(subject.destination, "it was cancelled");
    }
    if (status == OutOfMemory && (outcome.isDamaged || outcome.isStampDamaged)) {
        return CannotRead(outcome.isDamaged ? subject.source : subject.stamp, "it is damaged");
    }
    if (status == OutOfMemory && LooksAtNoPicture(step)) {
        return subject.destination.empty() ? CannotRead(subject.source, NotEnoughMemory)
                                           : CannotWrite(subject.destination, NotEnoughMemory);
    }
    switch (step) {
    case Step::Names:
        return WhyNoName(status, subject);
    case Step::Existing:
        return CannotWrite(subject.destination, "there is such a file already");
    case Step::Session:
        return WhyNotBegun(status, subject);
    case Step::Encoder:
        return CannotWrite(subject.destination, "nothing can be written in this format");
    case Step::Font:
        return CannotWrite(subject.destination, "the font '" + Shown(subject.font) + "' is not installed");
    case Step::LoadStamp:
    case Step::DrawStamp:
        return WhyNotRead(status, subject.stamp, Origin::File, subject.encoding);
    case Step::Make:
        return WhyNotMade(status, outcome.result, subject.destination);
    case Step::Cut:
        if (status == OutOfMemory) {
            return CannotRead(subject.source, "it is damaged, or there is not enough memory for it");
        }
        return "cannot crop " + Shown(subject.source) + ": the rectangle reaches beyond the picture, whose size is " +
               TextOf(outcome.source);
    case Step::LayOver:
        return CannotWrite(subject.destination, "the imaging library cannot lay a picture over a colour");
    case Step::Property:
        return status == PropertyNotFound ? "cannot read the date of " + Shown(subject.source) + ": it has none"
                                          : CannotWrite(subject.destination, "it cannot be given this date");
    case Step::Save:
    case Step::Turn:
        return WhyNotWritten(outcome, subject);
    default:
        return WhyNotRead(status, subject.source, subject.isSourceFile ? Origin::File : Origin::Memory,
                          subject.encoding);
    }
}

} // namespace

std::string Sentence(const Outcome& outcome, const Subject& subject) {
    if (outcome.first.status != Done) {
        return WhyNotDone(outcome, subject);
    }
    if (!outcome.isDamaged && !outcome.isStampDamaged) {
        return {};
    }
    return Shown(outcome.isDamaged ? subject.source : subject.stamp) + " is damaged: not all of it could be decoded";
}

} // namespace lumbrix
