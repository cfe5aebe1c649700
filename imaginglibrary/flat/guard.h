// The one place where a flat function checks that it may work, and where exceptions become a status.
#pragma once

#include "imaginglibrary/core/status.h"
#include "imaginglibrary/flat/sessions.h"

#include <new>

namespace imaginglibrary {

// Runs the body of a flat function and gives back its status.
template <class Body> Status Guarded(Body body) {
    if (!HasSession()) {
        return Status::GdiplusNotInitialized;
    }
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return Status::OutOfMemory;
    } catch (...) {
        return Status::GenericError;
    }
}

} // namespace imaginglibrary
