// The annotate and crop window, control by control, and what its modes change.
#pragma once

#include "annotate/editmode.h"
#include "toolkit/layout.h"

#include <array>

namespace lumbrix::annotatewindow {

enum Id : int {
    PictureControl = 1001,
    AnnotationLabel = 1002,
    AnnotationBox = 1003,
    FontColorButton = 1012,
    HelpLabel = 1013,
    FontButton = 1014,
    KeepCheck = 1019,
    StampButton = 1020,
    HelpButton = 1021,
};

inline constexpr WindowFont AnnotateWindowFonts[] = {{"Arial", 10, 400}};
inline constexpr int AnnotateFont = 0;

// clang-format off
inline constexpr Control AnnotateWindowControls[] = {
    {PictureControl, ControlKind::PictureList, "", 0, 0, 428, 255, NoFont},
    {AnnotationLabel, ControlKind::Label, "Annotation:", 5, 260, 45, 10, AnnotateFont, Cyan, 0, Black},
    {AnnotationBox, ControlKind::TextBox, "", 50, 260, 220, 13, NoFont},
    {FontColorButton, ControlKind::PushButton, "Font Color", 275, 260, 70, 15, NoFont},
    {FontButton, ControlKind::PushButton, "Font", 380, 260, 30, 15, AnnotateFont},
    {StampButton, ControlKind::PushButton, "Stamp", 271, 260, 30, 15, AnnotateFont},
    {KeepCheck, ControlKind::CheckBox, "Keep", 305, 260, 35, 10, AnnotateFont, Cyan, ClipsSiblings},
    {HelpButton, ControlKind::PushButton, "Help", 345, 260, 30, 15, AnnotateFont},
    {HelpLabel, ControlKind::Label, "", 5, 275, 420, 30, AnnotateFont, Cyan, 0, Red},
};
// clang-format on

inline constexpr WindowLayout AnnotateWindowLayout{
    .caption = "Annotate image",
    .x = 0,
    .y = 0,
    .width = 427,
    .height = 295,
    .style = FixedDialog | HasSystemMenu,
    .extendedStyle = DialogFrame,
    .background = Cyan,
    .fonts = AnnotateWindowFonts,
    .controls = AnnotateWindowControls,
};

// What a mode makes of the window once its controls exist. In dialog units.
struct AnnotateModeLayout {
    const char* helpText;
    int helpY;
    int helpHeight;
    int windowHeight;
    std::array<int, 7> hidden; // 0 where there are fewer
    int firstFocus;            // the control that has the keyboard at first
    int covered = 0;           // one that the help lies over, where it can be used but is not seen; 0 for none
};

// The button for the colour is hidden in all of them: the dialog for the font asks for it too.
inline constexpr AnnotateModeLayout AnnotateModeLayouts[] = {
    // in the order of the modes
    {"Click Stamp for overstamping with image or write the text to annotate. Click the picture where the annotation "
     "should be. Repeat as needed.The annotated image will be created as the 'Convert/Write to' shows.",
     275,
     30,
     AnnotateWindowLayout.height,
     {FontColorButton},
     AnnotationBox},
    {"Please click and hold down the left mouse button on the picture where the left upper corner of the cropped image "
     "should be. Than move the mouse to draw the rectangular as needed and release the button.\r\nThe cropped image "
     "will be created as the 'Convert/Write to' shows in the prior screen.",
     257,
     50,
     AnnotateWindowLayout.height,
     {FontColorButton, AnnotationBox, AnnotationLabel, FontButton, StampButton, HelpButton},
     PictureControl,
     KeepCheck},
    {"",
     257,
     50,
     255,
     {FontColorButton, AnnotationBox, AnnotationLabel, FontButton, StampButton, HelpLabel, HelpButton},
     PictureControl},
};

constexpr const AnnotateModeLayout& LayoutOf(EditMode mode) {
    return AnnotateModeLayouts[static_cast<std::size_t>(mode)];
}

} // namespace lumbrix::annotatewindow
