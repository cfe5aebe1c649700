// The beginning that all operations from file to file have in common.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/status.h"

#include <string>

namespace lumbrix {

// What an operation holds once it has begun.
struct OpenedSource {
    SessionToken token = 0;
    Clsid encoder{};
    ImageHandle image = nullptr;
};

// Opens a session, finds the encoder for a MIME word, and loads the source, in this order. NoSession, NoEncoder, or the
// imaging library's status on failure; where the encoder is missing or the load fails the session stays open on
// purpose.
StatusValue OpenSource(const std::string& source, const std::string& mimeWord, OpenedSource* opened);

} // namespace lumbrix
