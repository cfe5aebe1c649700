// What a window must look like, typed a second time for the tests, so that no change of the product's goes unseen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

enum class ExpectedKind {
    Label,
    TextBox,
    DigitsBox,
    MultiLineBox,
    PushButton,
    CheckBox,
    FirstRadioButton, // of its group
    RadioButton,
    Frame,
    DropDownList,
    TrackBar,
    Graphic,
    PictureList,
};

struct ExpectedFont {
    std::string face;
    int points;
    int weight;
    bool isItalic = false;
    bool isUnderlined = false;
};

// Of whatever has none of its own: that of the dialog units.
inline const ExpectedFont SystemsFont{"MS Sans Serif", 8, 0};

// As the platform packs colours: blue, green and red from the top down. -1 for whatever has none of its own.
using ExpectedColor = std::int64_t;
constexpr ExpectedColor SystemsColor = -1;

// In dialog units.
struct ExpectedPlace {
    int x;
    int y;
    int width;
    int height;
};

struct ExpectedControl {
    int id;
    ExpectedKind kind;
    std::string caption;
    ExpectedPlace place;
    ExpectedFont font = SystemsFont;
    ExpectedColor background = SystemsColor;
    ExpectedColor text = SystemsColor;
    bool isHidden = false;
    std::uint32_t extraStyle = 0; // besides that of the kind
    std::uint32_t extraExtendedStyle = 0;
};

enum class ExpectedPosition { MiddleOfTheScreen, TopLeftOfTheScreen, Maximized, Anywhere };
enum class ExpectedDrop { Taken, Refused };

// Styles are those of the template; once shown, a window has more. The controls are in the order of their creation.
struct ExpectedWindow {
    std::string caption;
    ExpectedPlace place;
    std::uint32_t style;
    std::uint32_t extendedStyle;
    ExpectedColor background;
    ExpectedFont font;
    ExpectedPosition position;
    ExpectedDrop drop;
    std::vector<ExpectedControl> controls;
};

} // namespace tests
