// The window in which text for the canvas is entered.
#include "draw/textentry.h"

#include "draw/textentrylayout.h"
#include "toolkit/dialog.h"
#include "toolkit/fontdialog.h"

namespace lumbrix {

namespace {

using namespace textentry;

OwnedFont MakeFont(const SlantedFont& font) {
    const WindowContext screen(nullptr);
    const LOGFONTA description = DescriptionOf(font, GetDeviceCaps(screen.Get(), LOGPIXELSY));
    return OwnedFont(CreateFontIndirectA(&description));
}

class TextEntry : public Dialog {
  public:
    TextEntry(TextFont& font, FillValue fillColor, const std::function<void(OwnedFont)>& setFont, std::string& text)
        : Dialog(TextEntryLayout), font_(font), fillColor_(fillColor), setFont_(setFont), text_(text) {}

  private:
    void OnStart() override {
        SetText(TextBox, font_.lastEnteredText);
        SetText(AngleBox, AngleText(font_.angleTenths));
    }

    void OnCommand(int id, int notification) override {
        if (!IsClick(notification)) {
            return;
        }
        switch (id) {
        case ChangeFontButton:
            return ChangeFont();
        case ExitButton:
            text_ = TextOf(TextBox);
            return End();
        case AbortButton:
            return End();
        default:
            return;
        }
    }

    void OnClose() override {}

    // The box shows the font too, in a copy of its own.
    void ChangeFont() {
        BeginFontChange(font_, fillColor_, TextOf(AngleBox));
        const FontPreset preset = PresetOf(font_);
        StoreChosenFont(font_, ChooseFontOf(Handle(), FontKinds::Scalable, &preset));
        const SlantedFont chosen = SlantedFontOf(font_);
        OwnedFont shown = MakeFont(chosen);
        SendMessageA(Item(TextBox), WM_SETFONT, reinterpret_cast<WPARAM>(shown.Get()), FALSE);
        boxFont_ = std::move(shown);
        font_.lastEnteredText = TextOf(TextBox);
        setFont_(MakeFont(chosen));
        InvalidateRect(Item(TextBox), nullptr, TRUE);
        UpdateWindow(Item(TextBox));
    }

    TextFont& font_;
    FillValue fillColor_;
    const std::function<void(OwnedFont)>& setFont_;
    std::string& text_;
    OwnedFont boxFont_;
};

} // namespace

LOGFONTA DescriptionOf(const SlantedFont& font, int pixelsPerInch) {
    LOGFONTA description{};
    description.lfHeight = FontHeight(font.points, pixelsPerInch);
    description.lfEscapement = font.escapement;
    description.lfOrientation = font.escapement;
    description.lfWeight = font.weight;
    description.lfItalic = font.isItalic;
    description.lfUnderline = font.isUnderlined;
    description.lfStrikeOut = font.isStruckOut;
    description.lfCharSet = static_cast<BYTE>(font.charset);
    description.lfPitchAndFamily = static_cast<BYTE>(font.pitch);
    lstrcpynA(description.lfFaceName, font.face.c_str(), LF_FACESIZE);
    return description;
}

INT_PTR ShowTextEntry(HWND parent, TextFont& font, FillValue fillColor, const std::function<void(OwnedFont)>& setFont,
                      std::string& text) {
    return TextEntry(font, fillColor, setFont, text).RunModal(parent);
}

} // namespace lumbrix
