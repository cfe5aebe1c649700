// What a caller draws.
#include "fuzz/targets/flat/caller.h"

namespace fuzz {

void Caller::CallOnSurface(std::size_t which) {
    switch (which) {
    case 0:
    case 1:
        FlatCall{"GdipGetImageGraphicsContext", SmallImage(), &PlaceIn(handles_.surfaces, choices_)};
        break;
    case 2:
        FlatCall{"GdipDeleteGraphics", Surface()};
        break;
    case 3: {
        std::uint32_t number = 0;
        FlatCall{"GdipSaveGraphics", Surface(), &number};
        break;
    }
    case 4:
        FlatCall{"GdipTranslateWorldTransform", Surface(), NumberFrom(choices_), NumberFrom(choices_),
                 choices_.Coin() ? MatrixOrder::Append : MatrixOrder::Prepend};
        break;
    case 5:
        FlatCall{"GdipRotateWorldTransform", Surface(), NumberFrom(choices_), MatrixOrder::Prepend};
        break;
    case 6:
        FlatCall{"GdipDrawImage", Surface(), SmallImage(), NumberFrom(choices_), NumberFrom(choices_)};
        break;
    case 7: {
        const std::array<std::int32_t, 4> area{choices_.Length(), choices_.Length(), choices_.Length(),
                                               choices_.Length()};
        FlatCall{"GdipDrawImageRectI", Surface(), SmallImage(), area[0], area[1], area[2], area[3]};
        break;
    }
    case 8: {
        std::array<std::int32_t, 8> areas;
        std::generate(areas.begin(), areas.end(), [&] { return choices_.Length(); });
        FlatCall{"GdipDrawImageRectRectI",
                 Surface(),
                 SmallImage(),
                 areas[0],
                 areas[1],
                 areas[2],
                 areas[3],
                 areas[4],
                 areas[5],
                 areas[6],
                 areas[7],
                 choices_.Coin() ? Unit::Pixel : Unit::World,
                 static_cast<const void*>(nullptr),
                 static_cast<const void*>(nullptr),
                 static_cast<const void*>(nullptr)};
        break;
    }
    case 9: {
        std::array<FlatPoint, 3> corners;
        std::generate(corners.begin(), corners.end(), [&] {
            const std::int32_t x = choices_.Length();
            return FlatPoint{x, choices_.Length()};
        });
        FlatCall{"GdipDrawImagePointsI", Surface(), SmallImage(), static_cast<const FlatPoint*>(corners.data()),
                 std::int32_t{3}};
        break;
    }
    case 10:
        FlatCall{"GdipDrawEllipse",
                 Surface(),
                 OneOf(handles_.pens, choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_)};
        break;
    default: {
        const auto mode = std::int32_t{choices_.Byte()} % 10 - 1;
        FlatCall{"GdipSetInterpolationMode", Surface(), static_cast<InterpolationMode>(mode)};
        FlatCall{"GdipSetSmoothingMode", Surface(), static_cast<SmoothingMode>(mode)};
        break;
    }
    }
}

void Caller::CallForText(std::size_t which) {
    switch (which) {
    case 0:
        FlatCall{"GdipCreateFontFamilyFromName", choices_.Coin() ? u"Liberation Sans" : u"liberation MONO",
                 static_cast<void*>(nullptr), &PlaceIn(handles_.families, choices_)};
        break;
    case 1:
    case 2:
        FlatCall{"GdipCreateFont",
                 OneOf(handles_.families, choices_),
                 NumberFrom(choices_),
                 std::int32_t{choices_.Byte()} % 17,
                 static_cast<Unit>(choices_.Below(8)),
                 &PlaceIn(handles_.fonts, choices_)};
        break;
    case 3:
        FlatCall{"GdipCreateSolidFill", choices_.Of<Color>(), &PlaceIn(handles_.brushes, choices_)};
        FlatCall{"GdipCreatePen1", choices_.Of<Color>(), NumberFrom(choices_), Unit::World,
                 &PlaceIn(handles_.pens, choices_)};
        break;
    case 4:
        FlatCall{"GdipDeleteFont", OneOf(handles_.fonts, choices_)};
        FlatCall{"GdipDeleteFontFamily", OneOf(handles_.families, choices_)};
        break;
    case 5:
        FlatCall{"GdipDeletePen", OneOf(handles_.pens, choices_)};
        FlatCall{"GdipDeleteBrush", OneOf(handles_.brushes, choices_)};
        break;
    default: {
        std::array<char16_t, 9> text{};
        std::generate_n(text.begin(), 8, [&] { return choices_.Of<char16_t>(); });
        const FlatRectangle at{NumberFrom(choices_), NumberFrom(choices_), 0, 0};
        FlatCall{"GdipDrawString",
                 Surface(),
                 static_cast<const char16_t*>(text.data()),
                 std::int32_t{-1},
                 OneOf(handles_.fonts, choices_),
                 &at,
                 static_cast<const void*>(nullptr),
                 OneOf(handles_.brushes, choices_)};
        break;
    }
    }
}

} // namespace fuzz
