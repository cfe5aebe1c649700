// What a caller's job asks for, as wishes of the engine.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "imaging/outcome.h"

#include <string>

namespace lumbrix::exports {

// All but the encoding and the background. A null job wants what is usual.
Wishes WishesOf(const lumbrix_job* job);

// Whether a job's background is a colour, or there is none; it becomes a wish then.
bool TakeBackground(const lumbrix_job* job, Wishes& wishes);

// Whether a job's quality and compression mean something for the format; they become wishes then.
bool TakeEncoding(const lumbrix_job* job, const std::string& mimeWord, Wishes& wishes);

} // namespace lumbrix::exports
