// The system's dialog for fonts.
#pragma once

#include "toolkit/fontresult.h"

#include <windows.h>

#include <optional>

namespace lumbrix {

// Shows the dialog over its owner, with its effects: lines and colour. Without a preset it opens on nothing. Nothing
// comes back where it is cancelled.
std::optional<FontResult> ChooseFontOf(HWND owner, FontKinds kinds, const FontPreset* preset = nullptr);

} // namespace lumbrix
