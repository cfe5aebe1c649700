// Turns a layout into the platform's dialog template.
#include "toolkit/template.h"

#include <cstring>
#include <string_view>

namespace lumbrix {

namespace {

constexpr WORD UnitFontPoints = 8;
constexpr const char* UnitFontFace = "MS Sans Serif";

// What a kind of control is on the platform.
struct KindStyle {
    WORD classAtom; // 0 for a class that is known by its name
    DWORD style;
    DWORD extendedStyle;
};

constexpr WORD ButtonClass = 0x0080;
constexpr WORD EditClass = 0x0081;
constexpr WORD StaticClass = 0x0082;
constexpr WORD ListClass = 0x0085;
constexpr WORD NamedClass = 0;
constexpr DWORD Shown = WS_CHILD | WS_VISIBLE;
constexpr DWORD Reached = Shown | WS_TABSTOP; // by the tab key

KindStyle StyleOf(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
        return {StaticClass, Shown, 0};
    case ControlKind::TextBox:
        return {EditClass, Reached | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case ControlKind::DigitsBox:
        return {EditClass, Reached | ES_AUTOHSCROLL | ES_NUMBER, WS_EX_CLIENTEDGE};
    case ControlKind::MultiLineBox:
        return {EditClass, Reached | ES_AUTOHSCROLL | ES_MULTILINE | ES_WANTRETURN, WS_EX_CLIENTEDGE};
    case ControlKind::PushButton:
        return {ButtonClass, Reached, 0};
    case ControlKind::CheckBox:
        return {ButtonClass, Reached | BS_AUTOCHECKBOX, 0};
    case ControlKind::RadioButton:
        return {ButtonClass, Reached | BS_AUTORADIOBUTTON, 0};
    case ControlKind::DropDownList:
        return {ListClass, Reached | CBS_DROPDOWNLIST | WS_VSCROLL, 0};
    case ControlKind::TrackBar:
        return {NamedClass, Reached, 0};
    case ControlKind::Graphic:
        return {StaticClass, Shown | SS_OWNERDRAW, 0};
    case ControlKind::PictureList:
        return {NamedClass, Shown, 0};
    case ControlKind::Frame:
        break;
    }
    return {ButtonClass, Shown | BS_GROUPBOX, 0};
}

// Of the classes that have no number.
const char* ClassName(ControlKind kind) {
    return kind == ControlKind::TrackBar ? "msctls_trackbar32" : "syslistview32";
}

// The template's pieces, one behind the other.
class Pieces {
  public:
    void Add(WORD word) { words_.push_back(word); }

    template <class Record> void Add(const Record& record) {
        static_assert(sizeof record % sizeof(WORD) == 0);
        const std::size_t start = words_.size();
        words_.resize(start + sizeof record / sizeof(WORD));
        std::memcpy(&words_[start], &record, sizeof record);
    }

    // As wide text with its zero.
    void AddText(std::string_view text) {
        for (const char character : text) {
            words_.push_back(static_cast<unsigned char>(character));
        }
        words_.push_back(0);
    }

    void AlignToDoubleWord() { words_.resize((words_.size() + 1) / 2 * 2); }

    std::vector<WORD> Take() { return std::move(words_); }

  private:
    std::vector<WORD> words_;
};

void AddControl(Pieces& pieces, const OwnedControl& control) {
    constexpr WORD ClassAtomFollows = 0xFFFF;
    const KindStyle kind = StyleOf(control.kind);
    pieces.AlignToDoubleWord();
    pieces.Add(DLGITEMTEMPLATE{kind.style | control.extraStyle, kind.extendedStyle | control.extraExtendedStyle,
                               static_cast<short>(control.x), static_cast<short>(control.y),
                               static_cast<short>(control.width), static_cast<short>(control.height),
                               static_cast<WORD>(control.id)});
    if (kind.classAtom == NamedClass) {
        pieces.AddText(ClassName(control.kind));
    } else {
        pieces.Add(ClassAtomFollows);
        pieces.Add(kind.classAtom);
    }
    pieces.AddText(control.caption);
    pieces.Add(WORD{0}); // no creation data
}

} // namespace

std::vector<WORD> DialogTemplate(const OwnedLayout& layout) {
    constexpr WORD None = 0;
    Pieces pieces;
    pieces.Add(DLGTEMPLATE{layout.style | DS_SETFONT, layout.extendedStyle, static_cast<WORD>(layout.controls.size()),
                           static_cast<short>(layout.x), static_cast<short>(layout.y), static_cast<short>(layout.width),
                           static_cast<short>(layout.height)});
    pieces.Add(None); // menu
    pieces.Add(None); // class
    pieces.AddText(layout.caption);
    pieces.Add(UnitFontPoints);
    pieces.AddText(UnitFontFace);
    for (const OwnedControl& control : layout.controls) {
        AddControl(pieces, control);
    }
    return pieces.Take();
}

} // namespace lumbrix
