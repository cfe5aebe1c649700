// The exported doors that tell what happened: each turns a job into wishes, and an outcome into the job's report.
#include "imaging/annotate.h"
#include "imaging/blank.h"
#include "imaging/convert.h"
#include "imaging/crop.h"
#include "imaging/datestamp.h"
#include "imaging/dimensions.h"
#include "imaging/exports/handedin.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/exports/texts.h"
#include "imaging/exports/wishes.h"
#include "imaging/formats.h"
#include "imaging/icon.h"
#include "imaging/properties.h"
#include "imaging/resize.h"
#include "imaging/rotate.h"
#include "imaging/sentence.h"
#include "imaging/thumbnail.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

using namespace lumbrix;
using namespace lumbrix::exports;

// What every caller's job has at least.
constexpr std::size_t SmallestJob = offsetof(lumbrix_job, message) + sizeof(lumbrix_job::message);

// The format that a job wants, or that of the destination's extension; empty for an unknown one or a blank name. What
// goes to no file has no extension, whatever it is called.
std::string MimeWordOf(const Subject& subject, const lumbrix_job* job) {
    const bool isNamed = job != nullptr && job->format != nullptr;
    if (IsBlank(subject.source) || IsBlank(subject.destination) || !(isNamed || subject.isDestinationFile)) {
        return {};
    }
    return MimeTypeForName(isNamed ? job->format : subject.destination);
}

void PutMessage(lumbrix_job& job, std::string_view message) {
    const std::size_t length = std::min(message.size(), sizeof job.message - 1);
    std::copy_n(message.begin(), length, job.message);
    job.message[length] = 0;
}

int32_t Report(lumbrix_job* job, const Outcome& outcome, std::string_view message) {
    if (job != nullptr) {
        const PixelSize size = outcome.result.width != 0 ? outcome.result : outcome.source;
        job->status = outcome.first.status;
        job->written = outcome.isWritten ? 1 : 0;
        job->damaged = outcome.isDamaged || outcome.isStampDamaged ? 1 : 0;
        job->width = size.width;
        job->height = size.height;
        PutMessage(*job, message);
    }
    return outcome.first.status;
}

// Takes no memory, for it may be what is missing.
int32_t ReportFailure(lumbrix_job* job, StatusValue status, std::string_view message) {
    Outcome outcome;
    outcome.first.status = status;
    return Report(job, outcome, message);
}

template <class Operate>
int32_t RunWith(lumbrix_job* job, const Subject& subject, const Wishes& wishes, Operate operate) {
    const Outcome outcome = operate(wishes);
    return Report(job, outcome, Sentence(outcome, subject));
}

// Runs an operation for a caller. `operate` gets the wishes and gives back the outcome.
template <class Operate> int32_t Run(lumbrix_job* job, const Subject& subject, Operate operate) {
    Wishes wishes = WishesOf(job);
    GrowingMemory gathered;
    if (const StatusValue status = TakeInput(job, gathered, wishes); status != Done) {
        return ReportFailure(job, status, WhyNotHandedIn(status, subject));
    }
    return RunWith(job, subject, wishes, operate);
}

// The same for an operation that writes a file of a format, "" for one that is unknown.
template <class Operate>
int32_t RunWriting(lumbrix_job* job, const Subject& subject, const std::string& mimeWord, Operate operate) {
    Wishes wishes = WishesOf(job);
    if (mimeWord.empty()) {
        return RunWith(job, subject, wishes, operate); // which ends it before anything is read
    }
    if (!TakeBackground(job, wishes)) {
        return ReportFailure(job, InvalidParameter, "the background is no colour of six hexadecimal digits, RRGGBB");
    }
    if (!TakeEncoding(job, mimeWord, wishes)) {
        return ReportFailure(job, InvalidParameter, "the quality or the compression is none that the format has");
    }
    GrowingMemory gathered;
    StatusValue status = TakeOutput(job, wishes);
    if (status == Done) {
        status = TakeInput(job, gathered, wishes);
    }
    return status == Done ? RunWith(job, subject, wishes, operate)
                          : ReportFailure(job, status, WhyNotHandedIn(status, subject));
}

// Lets no exception out. `body` makes the texts of the caller its own and calls Run.
template <class Body> int32_t TruthfulDoor(lumbrix_job* job, Body body) noexcept {
    if (job != nullptr && job->size < SmallestJob) {
        return InvalidParameter;
    }
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return ReportFailure(job, OutOfMemory, "there is not enough memory");
    } catch (...) {
        return ReportFailure(job, Refused, "an error inside Lumbrix ended the operation");
    }
}

// For operations whose orders have sources, destinations and formats in front. `operate` gets the format too.
template <class Operate>
int32_t RunToFile(const char* source, const char* destination, lumbrix_job* job, Operate operate) {
    return TruthfulDoor(job, [&] {
        const Subject subject = SubjectOf(source, destination, job);
        const std::string mimeWord = MimeWordOf(subject, job);
        return RunWriting(job, subject, mimeWord,
                          [&](const Wishes& wishes) { return operate(subject, mimeWord, wishes); });
    });
}

// For a struct that a caller must not leave out, nor leave without its size.
int32_t RefuseNull(lumbrix_job* job) {
    return TruthfulDoor(job, [=] {
        return ReportFailure(job, InvalidParameter, "a struct or a list was left out, or its size was not set");
    });
}

// Whether a struct is there and tells that it is as large as it is known here.
template <class Struct> bool IsWhole(const Struct* given) { return given != nullptr && given->size >= sizeof(Struct); }

// For operations that put what a file says into a text.
template <class Operate> int32_t RunToText(const char* file, char** text, lumbrix_job* job, Operate operate) {
    if (text == nullptr) {
        return RefuseNull(job);
    }
    return TruthfulDoor(job, [&] {
        const Subject subject = SubjectOf(file, nullptr, job);
        std::string found;
        const int32_t status =
            Run(job, subject, [&](const Wishes& wishes) { return operate(subject.source, found, wishes); });
        ReplaceText(text, found);
        return status;
    });
}

} // namespace

const char* LUMBRIX_CALL lumbrix_status_name(int32_t status) { return StatusName(status); }

int32_t LUMBRIX_CALL lumbrix_convert(const char* source, const char* destination, lumbrix_job* job) {
    return RunToFile(source, destination, job,
                     [](const Subject& subject, const std::string& mime, const Wishes& wishes) {
                         return Convert({subject.source, subject.destination, mime}, wishes);
                     });
}

int32_t LUMBRIX_CALL lumbrix_thumb(const char* source, const char* destination, int32_t height, lumbrix_job* job) {
    return RunToFile(source, destination, job,
                     [=](const Subject& subject, const std::string& mime, const Wishes& wishes) {
                         return MakeThumbnail({subject.source, subject.destination, mime}, height, wishes);
                     });
}

int32_t LUMBRIX_CALL lumbrix_resize(const char* source, const char* destination, int32_t height, lumbrix_job* job) {
    return RunToFile(source, destination, job,
                     [=](const Subject& subject, const std::string& mime, const Wishes& wishes) {
                         return Resize({subject.source, subject.destination, mime, {.height = height}}, wishes);
                     });
}

int32_t LUMBRIX_CALL lumbrix_fit(const char* source, const char* destination, const lumbrix_fitting* fitting,
                                 lumbrix_job* job) {
    if (!IsWhole(fitting)) {
        return RefuseNull(job);
    }
    const Fitting wanted{.height = fitting->height, .width = fitting->width, .percent = fitting->percent};
    return RunToFile(source, destination, job,
                     [=](const Subject& subject, const std::string& mime, const Wishes& wishes) {
                         return Resize({subject.source, subject.destination, mime, wanted}, wishes);
                     });
}

int32_t LUMBRIX_CALL lumbrix_crop(const char* source, const char* destination, const lumbrix_rectangle* rectangle,
                                  lumbrix_job* job) {
    if (rectangle == nullptr) {
        return RefuseNull(job);
    }
    return RunToFile(source, destination, job,
                     [=](const Subject& subject, const std::string& mime, const Wishes& wishes) {
                         return Crop({subject.source, subject.destination, mime, rectangle->x, rectangle->y,
                                      rectangle->width, rectangle->height},
                                     wishes);
                     });
}

int32_t LUMBRIX_CALL lumbrix_rotate(const char* source, const char* destination, const lumbrix_turn* turn,
                                    lumbrix_job* job) {
    if (!IsWhole(turn)) {
        return RefuseNull(job);
    }
    return RunToFile(
        source, destination, job, [=](const Subject& subject, const std::string& mime, const Wishes& wishes) {
            return Rotate({subject.source, subject.destination, mime, turn->angle, Text(turn->flip)}, wishes);
        });
}

int32_t LUMBRIX_CALL lumbrix_annotate(const char* source, const char* destination, const lumbrix_annotation* annotation,
                                      lumbrix_job* job) {
    if (!IsWhole(annotation)) {
        return RefuseNull(job);
    }
    return TruthfulDoor(job, [&] {
        const lumbrix_annotation& from = *annotation;
        Subject subject = SubjectOf(source, destination, job);
        subject.font = Text(from.font);
        Annotation text{from.x,    from.y,      Text(from.text), subject.font,   from.font_size,
                        from.bold, from.italic, from.underline,  from.strikeout, from.alpha,
                        from.blue, from.green,  from.red};
        text.encoding = subject.encoding;
        const std::string mimeWord = MimeWordOf(subject, job);
        return RunWriting(job, subject, mimeWord, [&](const Wishes& wishes) {
            return Annotate({subject.source, subject.destination, mimeWord, text}, wishes);
        });
    });
}

int32_t LUMBRIX_CALL lumbrix_stamp(const char* source, const char* destination, const lumbrix_stamp_place* place,
                                   lumbrix_job* job) {
    if (!IsWhole(place)) {
        return RefuseNull(job);
    }
    return TruthfulDoor(job, [&] {
        Subject subject = SubjectOf(source, destination, job);
        subject.stamp = Text(place->stamp);
        const std::string mimeWord = MimeWordOf(subject, job);
        return RunWriting(job, subject, mimeWord, [&](const Wishes& wishes) {
            return Stamp({subject.source, subject.destination, mimeWord, place->x, place->y, subject.stamp}, wishes);
        });
    });
}

int32_t LUMBRIX_CALL lumbrix_date_stamp(const char* source, const char* destination, const char* date,
                                        lumbrix_job* job) {
    return TruthfulDoor(job, [&] {
        const Subject subject = SubjectOf(source, destination, job);
        return RunWriting(job, subject, "image/jpeg", [&](const Wishes& wishes) {
            return StampDate({subject.source, subject.destination, Text(date)}, wishes);
        });
    });
}

int32_t LUMBRIX_CALL lumbrix_icon(const char* source, const char* destination, const int32_t* sizes, int32_t count,
                                  lumbrix_job* job) {
    if (sizes == nullptr || count < 0) {
        return RefuseNull(job);
    }
    return TruthfulDoor(job, [&] {
        const Subject subject = SubjectOf(source, destination, job);
        // One more than there can be is enough to refuse them.
        const std::vector<std::int32_t> sides(sizes, sizes + std::min(count, LargestIcon + 1));
        return RunWriting(job, subject, "image/x-icon", [&](const Wishes& wishes) {
            return MakeIcon({subject.source, subject.destination, sides}, wishes);
        });
    });
}

char* LUMBRIX_CALL lumbrix_stamped_name(const char* file) {
    char* name = nullptr;
    Door([&] {
        name = NewText(StampedNameBeside(Text(file)));
        return 0;
    });
    return name;
}

int32_t LUMBRIX_CALL lumbrix_read_size(const char* file, lumbrix_job* job) {
    return TruthfulDoor(job, [&] {
        const Subject subject = SubjectOf(file, nullptr, job);
        return Run(job, subject, [&](const Wishes& wishes) { return ReadSize(subject.source, wishes); });
    });
}

int32_t LUMBRIX_CALL lumbrix_read_date(const char* file, char** text, lumbrix_job* job) {
    return RunToText(file, text, job, ReadDate);
}

int32_t LUMBRIX_CALL lumbrix_read_properties(const char* file, char** text, lumbrix_job* job) {
    return RunToText(file, text, job, [](const std::string& name, std::string& list, const Wishes& wishes) {
        const Outcome outcome = ListProperties(name, list, wishes);
        std::erase(list, '\0'); // of values of bytes; a C text would end there
        return outcome;
    });
}
