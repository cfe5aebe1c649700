// The system's dialog for the font of annotations.
#pragma once

#include "toolkit/dialog.h"

namespace lumbrix {

// Lets the user choose font, styles and colour, and keeps them for all annotations to come. Where the dialog is
// cancelled nothing changes.
void ChooseAnnotationFont(const Dialog& owner);

} // namespace lumbrix
