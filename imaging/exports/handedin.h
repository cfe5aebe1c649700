// What a caller's job has in the place of files: an input to read from, an output to write to.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "imaging/outcome.h"
#include "imaging/sentence.h"

namespace lumbrix::exports {

// What stands behind the message is there in the jobs of callers who know of it; else the field counts as zero.
template <class Field> Field LaterField(const lumbrix_job* job, Field lumbrix_job::*field) {
    if (job == nullptr) {
        return Field();
    }
    const auto* start = reinterpret_cast<const char*>(job);
    const auto* end = reinterpret_cast<const char*>(&(job->*field) + 1);
    return end - start <= static_cast<std::ptrdiff_t>(job->size) ? job->*field : Field();
}

// Of the names and texts that come with a job, and of its message.
TextEncoding EncodingOf(const lumbrix_job* job);

// Names for what has none, such as "the input", and which of the two are files.
Subject SubjectOf(const char* source, const char* destination, const lumbrix_job* job);

// Makes a job's input part of the wishes. Bytes that only a callback can give are read to their end, into `gathered`,
// which must outlive the operation. InvalidParameter for a struct that cannot be meant, Win32Error where the callback
// failed, OutOfMemory where there is too much of it.
StatusValue TakeInput(const lumbrix_job* job, GrowingMemory& gathered, Wishes& wishes);

// The same for its output, whose struct must outlive the operation.
StatusValue TakeOutput(const lumbrix_job* job, Wishes& wishes);

// Why TakeInput or TakeOutput gave this status.
std::string WhyNotHandedIn(StatusValue status, const Subject& subject);

} // namespace lumbrix::exports
