// The numbered bitmaps that editing leaves beside the output file, and getting rid of them.
//
// What cannot be deleted now, since the imaging library may hold it open, is listed in the user's settings and deleted
// at the next start: value "Delete" of the key SOFTWARE\Lumbrix, full paths joined by "|". It is no record of edits.
#pragma once

#include "batch/order.h"
#include "platform/settingsstore.h"

#include <cstdint>
#include <string>

namespace lumbrix {

struct StepFiles {
    std::int32_t counter = 0;     // the highest number in use
    const Order* owner = nullptr; // whose target is the output file; null for an empty path. Not owned
};

// The bitmap with number `n` beside an output file, which is named as far as its first dot: "C:\a\b.c.jpg" has
// "C:\a\b1.bmp". Of an empty path the name is the number's, in the current folder.
std::string StepFile(const std::string& output, std::int32_t n);

// Deletes the bitmaps with the numbers 1 to three beyond the counter, whoever made them. From the first one on that is
// not deleted, the list is written for each such one, with those that are there; so an empty list may be written.
void RemoveStepFiles(const StepFiles& stepFiles, SettingsStore& store = SystemSettings());

// Deletes what is listed and then the list, whether everything could be deleted or not. An empty list stays.
void RunPendingDeletes(SettingsStore& store = SystemSettings());

} // namespace lumbrix
