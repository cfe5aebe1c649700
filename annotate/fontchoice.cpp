// The system's dialogs for the font and the colour of annotations.
#include "annotate/fontchoice.h"

#include "annotate/rules.h"

#include <commdlg.h>

#include <array>
#include <cstdlib>

namespace lumbrix {

void ChooseAnnotationFont(const Dialog& owner, TextStyle& style) {
    LOGFONTA chosen{};
    CHOOSEFONTA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner.Handle();
    dialog.lpLogFont = &chosen;
    dialog.Flags = CF_SCREENFONTS | CF_EFFECTS;
    if (!ChooseFontA(&dialog)) {
        return;
    }
    style.fontName = FontNameOrDefault(chosen.lfFaceName);
    // The height is in pixels already. Taking it for dialog units makes annotations larger than the dialog shows them,
    // and that is how large they have always been.
    style.fontSize = owner.InPixels({0, 0, 0, std::abs(chosen.lfHeight)}).bottom;
    style.bold = IsBoldWeight(chosen.lfWeight) ? 1 : 0;
    style.italic = chosen.lfItalic;
    style.underline = chosen.lfUnderline;
    style.strikeout = chosen.lfStrikeOut;
    SplitColor(dialog.rgbColors, &style.red, &style.green, &style.blue);
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
