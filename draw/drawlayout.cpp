// The paint window, control by control, in whatever size the screen has.
#include "draw/drawlayout.h"

#include <algorithm>
#include <span>

namespace lumbrix::drawwindow {

namespace {

// What stands right of the canvas and below it takes so much.
constexpr int RightColumn = 100;
constexpr int LowerRows = 65;

constexpr int CanvasMargin = 4;

constexpr int FieldsInARow = 16;
constexpr int FieldLeft = 5;
constexpr int FieldWidth = 11;
constexpr int FieldHeight = 10;
constexpr int UpperFields = -45; // from the lower edge
constexpr int LowerFields = -35;

constexpr std::uint32_t FieldStyle = LabelTakesMouse | LabelSunken;

// Horizontal places are from the right edge.
// clang-format off
constexpr Control Tools[] = {
    {DrawFrame, ControlKind::Frame, "&Draw", -95, 1, 90, 170, NoFont},
    {LineOption, ControlKind::RadioButton, "Line ", -93, 11, 75, 10, NoFont},
    {FreehandOption, ControlKind::RadioButton, "Freehand ", -93, 21, 75, 10, NoFont},
    {BeamsOption, ControlKind::RadioButton, "Beams ", -93, 31, 75, 10, NoFont},
    {RoundedBoxOption, ControlKind::RadioButton, "Rounded Box ", -93, 41, 75, 10, NoFont},
    {SquareBoxOption, ControlKind::RadioButton, "Square Box ", -93, 51, 75, 10, NoFont},
    {CircleOption, ControlKind::RadioButton, "Circle ", -93, 61, 75, 10, NoFont},
    {OvalOption, ControlKind::RadioButton, "Oval ", -93, 71, 75, 10, NoFont},
    {FillAreaOption, ControlKind::RadioButton, "Fill area ", -93, 81, 75, 10, NoFont},
    {NormalTextOption, ControlKind::RadioButton, "Text normal ", -93, 91, 75, 10, NoFont},
    {SunkenTextOption, ControlKind::RadioButton, "Text sunken ", -93, 101, 75, 10, NoFont},
    {RaisedTextOption, ControlKind::RadioButton, "Text raised ", -93, 111, 75, 10, NoFont},
    {PatternList, ControlKind::DropDownList, "", -92, 122, 76, 125, NoFont},
    {PenWidthList, ControlKind::DropDownList, "", -92, 139, 76, 125, NoFont},
    {PenTypeList, ControlKind::DropDownList, "", -92, 156, 76, 125, NoFont},
};

// Vertical places are from the lower edge.
constexpr Control Indicators[] = {
    {PenIndicator, ControlKind::Label, "", 185, UpperFields, 21, 20, NoFont, StartPenColor, LabelSunken},
    {FillIndicator, ControlKind::Label, "", 188, -42, 15, 14, NoFont, StartFillColor},
    {ColorFieldsLabel, ControlKind::Label, "Color fields:  Left-click to set pen color.  Right-click to set fill color.", 5, -55, 210, 10, NoFont},
};

// Horizontal places are from the right edge.
constexpr Control Buttons[] = {
    {StatusLabel, ControlKind::Label, RestingStatus, -90, 180, 80, 20, NoFont},
    {OpenButton, ControlKind::PushButton, "&Open", -90, 210, 80, 14, NoFont},
    {SaveButton, ControlKind::PushButton, "Save && Close", -90, 230, 80, 14, NoFont},
    {ClearButton, ControlKind::PushButton, "&Clear", -90, 250, 80, 14, NoFont},
    {TextButton, ControlKind::PushButton, "Text", -90, 270, 80, 14, NoFont},
    {QuitButton, ControlKind::PushButton, "&Quit", -90, 210, 80, 14, NoFont},
    {UndoButton, ControlKind::PushButton, "&Undo", -90, 270, 40, 14, NoFont},
    {RedoButton, ControlKind::PushButton, "&Redo", -50, 270, 40, 14, NoFont},
};
// clang-format on

// Places the rows of a table from an origin.
void AddRows(OwnedLayout& layout, std::span<const Control> rows, int originX, int originY) {
    for (const Control& row : rows) {
        layout.controls.push_back({row.id, row.kind, row.caption, originX + row.x, originY + row.y, row.width,
                                   row.height, row.font, row.background, row.extraStyle});
    }
}

// The two rows are made side by side.
void AddColorFields(OwnedLayout& layout) {
    const auto add = [&](int index, int column, int fromLowerEdge) {
        layout.controls.push_back({FirstColorField + index, ControlKind::Label, "", FieldLeft + FieldWidth * column,
                                   layout.height + fromLowerEdge, FieldWidth, FieldHeight, NoFont, PaletteColor(index),
                                   FieldStyle});
    };
    for (int column = 0; column < FieldsInARow; ++column) {
        add(column, column, UpperFields);
        add(FieldsInARow + column, column, LowerFields);
    }
}

} // namespace

PixelSize CanvasSize(PixelSize screen, PixelSize picture) {
    return {std::min(picture.width, screen.width - RightColumn), std::min(picture.height, screen.height - LowerRows)};
}

std::optional<OwnedLayout> DrawWindowLayout(PixelSize screen, PixelSize picture) {
    if (screen.width == 0 || screen.height == 0) {
        return std::nullopt;
    }
    const PixelSize canvas = CanvasSize(screen, picture);
    OwnedLayout layout;
    layout.caption = Caption;
    layout.width = screen.width;
    layout.height = screen.height;
    layout.style = FixedDialog | Centered | HasSystemMenu;
    layout.extendedStyle = DialogFrame;
    layout.controls.push_back({DrawCanvas, ControlKind::Graphic, "", CanvasMargin, CanvasMargin, canvas.width,
                               canvas.height, NoFont, SystemColor, LabelTakesMouse, SystemColor, ClientEdge});
    AddRows(layout, Tools, layout.width, 0);
    AddColorFields(layout);
    AddRows(layout, Indicators, 0, layout.height);
    AddRows(layout, Buttons, layout.width, 0);
    return layout;
}

} // namespace lumbrix::drawwindow
