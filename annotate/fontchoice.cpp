// The system's dialogs for the font and the colour of annotations.
#include "annotate/fontchoice.h"

#include "annotate/rules.h"
#include "toolkit/fontdialog.h"

#include <commdlg.h>

#include <array>
#include <cstdlib>

namespace lumbrix {

void ChooseAnnotationFont(const Dialog& owner, TextStyle& style) {
    const std::optional<FontResult> chosen = ChooseFontOf(owner.Handle(), FontKinds::All);
    if (!chosen) {
        return;
    }
    style.fontName = FontNameOrDefault(chosen->face);
    // The height is in pixels already. Taking it for dialog units makes annotations larger than the dialog shows them,
    // and that is how large they have always been.
    style.fontSize = owner.InPixels({0, 0, 0, std::abs(chosen->height)}).bottom;
    style.bold = IsBoldWeight(chosen->weight) ? 1 : 0;
    style.italic = chosen->italic;
    style.underline = chosen->underline;
    style.strikeout = chosen->strikeout;
    SplitColor(chosen->color, &style.red, &style.green, &style.blue);
}

void ChooseUnusedColor(const Dialog& owner) {
    std::array<COLORREF, 16> customColors{};
    CHOOSECOLORA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner.Handle();
    dialog.lpCustColors = customColors.data();
    dialog.Flags = CC_RGBINIT;
    ChooseColorA(&dialog);
}

} // namespace lumbrix
