// The main window, control by control.
#pragma once

#include "toolkit/layout.h"

#include <array>

namespace lumbrix::mainwindow {

enum Id : int {
    SingleFileLabel = 1001,
    TargetLabel = 1002,
    SourceFileBox = 1003,
    TargetBox = 1004,
    SourceFileButton = 1005,
    TargetButton = 1006,
    OutputTypeFrame = 1007,
    BmpRadio = 1008,
    JpgRadio = 1009,
    GifRadio = 1010,
    TiffRadio = 1011,
    PngRadio = 1012,
    SglRadio = 1013,
    SmallerCheck = 1015,
    HeightFrame = 1016,
    HeightBox = 1017,
    ConvertButton = 1018,
    AboutButton = 1019,
    SizeLabel = 1021,
    SourceFrame = 1023,
    SourceFolderBox = 1024,
    SourceFolderButton = 1025,
    SourceFolderLabel = 1026,
    CropCheck = 1027,
    AnnotateButton = 1028,
    RotateFrame = 1029,
    Rotate0Radio = 1030,
    Rotate90Radio = 1031,
    Rotate180Radio = 1032,
    Rotate270Radio = 1033,
    FreeEditButton = 1034,
    RotateFlipButton = 1035,
    CropButton = 1036,
    FlipFrame = 1037,
    FlipVerticalCheck = 1038,
    FlipHorizontalCheck = 1039,
};

// In the order of the output types and of the angles.
inline constexpr std::array OutputRadioIds{BmpRadio, JpgRadio, GifRadio, TiffRadio, PngRadio, SglRadio};
inline constexpr std::array RotationRadioIds{Rotate0Radio, Rotate90Radio, Rotate180Radio, Rotate270Radio};

inline constexpr int RegularFont = 0;
inline constexpr int BoldFont = 1;
inline constexpr WindowFont MainWindowFonts[] = {{"Arial", 10, 400}, {"Arial", 12, 700}};

// The first radio button of each group.
inline constexpr std::uint32_t FirstRadio = StartsGroup | TextAtLeft | TextInTheMiddle;

// clang-format off
inline constexpr Control MainWindowControls[] = {
    {SingleFileLabel, ControlKind::Label, "Single image file to convert:", 10, 20, 120, 10, RegularFont, Cyan},
    {SizeLabel, ControlKind::Label, "", 135, 20, 100, 10, RegularFont, Cyan},
    {TargetLabel, ControlKind::Label, "Convert/Write to:", 5, 80, 130, 10, RegularFont, Cyan},
    {SourceFileBox, ControlKind::TextBox, "", 10, 30, 230, 13},
    {TargetBox, ControlKind::TextBox, "", 5, 89, 240, 13},
    {SourceFileButton, ControlKind::PushButton, "..", 245, 30, 15, 12, BoldFont},
    {TargetButton, ControlKind::PushButton, "..", 255, 90, 15, 12, BoldFont},
    {OutputTypeFrame, ControlKind::Frame, "Type of output image", 5, 105, 115, 80, RegularFont, Cyan},
    {BmpRadio, ControlKind::RadioButton, "BITMAP (bmp)", 15, 120, 100, 10, RegularFont, Cyan, FirstRadio},
    {JpgRadio, ControlKind::RadioButton, "JPEG (jpg)", 15, 130, 100, 10, RegularFont, Cyan},
    {GifRadio, ControlKind::RadioButton, "GIF", 15, 140, 100, 10, RegularFont, Cyan},
    {TiffRadio, ControlKind::RadioButton, "TIFF (tiff)", 15, 150, 100, 10, RegularFont, Cyan},
    {PngRadio, ControlKind::RadioButton, "PNG", 15, 160, 100, 10, RegularFont, Cyan},
    {SglRadio, ControlKind::RadioButton, "SGL", 15, 170, 100, 10, RegularFont, Cyan},
    {SmallerCheck, ControlKind::CheckBox, "Create smaller image", 125, 110, 120, 10, RegularFont, Cyan},
    {HeightFrame, ControlKind::Frame, "Height of smaller image in pixels", 125, 122, 145, 33, RegularFont, Cyan},
    {HeightBox, ControlKind::TextBox, "50", 130, 135, 125, 13},
    {ConvertButton, ControlKind::PushButton, "Convert", 125, 190, 45, 15},
    {AboutButton, ControlKind::PushButton, "About", 225, 210, 45, 15},
    {SourceFrame, ControlKind::Frame, "Select one of these sources", 5, 5, 265, 70, RegularFont, Cyan},
    {SourceFolderBox, ControlKind::TextBox, "", 10, 55, 230, 13},
    {SourceFolderButton, ControlKind::PushButton, "..", 245, 55, 15, 12, BoldFont},
    {SourceFolderLabel, ControlKind::Label, "All images in this folder:", 10, 45, 100, 10, RegularFont, Cyan},
    {CropCheck, ControlKind::CheckBox, "Crop", 60, 180, 60, 10, RegularFont, Cyan},
    {AnnotateButton, ControlKind::PushButton, "Annotate", 175, 190, 45, 15},
    {RotateFrame, ControlKind::Frame, "Rotate", 5, 185, 115, 60, RegularFont, Cyan},
    {Rotate0Radio, ControlKind::RadioButton, "0 degrees", 15, 195, 70, 10, RegularFont, Cyan, FirstRadio},
    {Rotate90Radio, ControlKind::RadioButton, "90 degrees", 15, 207, 70, 10, RegularFont, Cyan},
    {Rotate180Radio, ControlKind::RadioButton, "180 degrees", 15, 218, 70, 10, RegularFont, Cyan},
    {Rotate270Radio, ControlKind::RadioButton, "270 degrees", 15, 229, 70, 10, RegularFont, Cyan},
    {FreeEditButton, ControlKind::PushButton, "Free Edit", 225, 190, 45, 15},
    {RotateFlipButton, ControlKind::PushButton, "Rotate/Flip", 125, 210, 45, 15},
    {CropButton, ControlKind::PushButton, "Crop", 175, 210, 45, 15},
    {FlipFrame, ControlKind::Frame, "Flip", 126, 156, 145, 29, RegularFont, Cyan},
    {FlipVerticalCheck, ControlKind::CheckBox, "Vertically", 130, 170, 60, 10, RegularFont, Cyan},
    {FlipHorizontalCheck, ControlKind::CheckBox, "Horizontally", 205, 170, 60, 10, RegularFont, Cyan},
};
// clang-format on

inline constexpr WindowLayout MainWindowLayout{
    .caption = "Lumbrix",
    .x = 194,
    .y = 0,
    .width = 276,
    .height = 249,
    .style = FixedDialog | Centered | HasSystemMenu | HasMinimizeBox | HasMaximizeBox,
    .extendedStyle = DialogFrame,
    .background = Cyan,
    .fonts = MainWindowFonts,
    .controls = MainWindowControls,
};

} // namespace lumbrix::mainwindow
