// The system's dialogs for the font and the colour of annotations.
#pragma once

#include "annotate/state.h"
#include "toolkit/dialog.h"

namespace lumbrix {

// Lets the user choose font, styles and colour, and keeps them for all annotations to come. Where the dialog is
// cancelled nothing changes.
void ChooseAnnotationFont(const Dialog& owner, TextStyle& style);

// Opens the dialog for a colour. Nothing comes of the choice: the button for it is never shown, for the dialog of the
// font asks for the colour too.
void ChooseUnusedColor(const Dialog& owner);

} // namespace lumbrix
