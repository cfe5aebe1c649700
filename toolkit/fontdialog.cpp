// The system's dialog for fonts.
#include "toolkit/fontdialog.h"

#include "toolkit/handles.h"
#include "toolkit/layout.h"

#include <commdlg.h>

namespace lumbrix {

namespace {

LOGFONTA DescriptionOf(const FontPreset& preset) {
    const WindowContext screen(nullptr);
    LOGFONTA description{};
    description.lfHeight = FontHeight(preset.points, GetDeviceCaps(screen.Get(), LOGPIXELSY));
    description.lfWeight = WeightOfStyle(preset.style);
    description.lfItalic = (preset.style & FontItalic) != 0;
    description.lfUnderline = (preset.style & FontUnderline) != 0;
    description.lfStrikeOut = (preset.style & FontStrikeout) != 0;
    description.lfCharSet = DEFAULT_CHARSET;
    lstrcpynA(description.lfFaceName, preset.face.c_str(), LF_FACESIZE);
    return description;
}

} // namespace

std::optional<FontResult> ChooseFontOf(HWND owner, FontKinds kinds, const FontPreset* preset) {
    LOGFONTA chosen{};
    CHOOSEFONTA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpLogFont = &chosen;
    dialog.Flags = CF_SCREENFONTS | CF_EFFECTS;
    if (kinds == FontKinds::Scalable) {
        dialog.Flags |= CF_SCALABLEONLY;
    }
    if (preset != nullptr) {
        dialog.Flags |= CF_INITTOLOGFONTSTRUCT;
        chosen = DescriptionOf(*preset);
    }
    if (!ChooseFontA(&dialog)) {
        return std::nullopt;
    }
    return FontResult{
        .face = chosen.lfFaceName,
        .height = chosen.lfHeight,
        .tenthsOfPoints = dialog.iPointSize,
        .weight = chosen.lfWeight,
        .italic = chosen.lfItalic,
        .underline = chosen.lfUnderline,
        .strikeout = chosen.lfStrikeOut,
        .charset = chosen.lfCharSet,
        .color = dialog.rgbColors,
    };
}

} // namespace lumbrix
