// Font families, fonts, brushes, and drawing text with them.
#include "imaginglibrary/flat/graphics.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/handles.h"
#include "imaginglibrary/operations/coverage.h"
#include "imaginglibrary/operations/fill.h"
#include "imaginglibrary/text/textlayout.h"

#include <cmath>
#include <string_view>

namespace imaginglibrary {

namespace {

constexpr std::int32_t Bold = 1;
constexpr std::int32_t Italic = 2;
constexpr std::int32_t Underline = 4;
constexpr std::int32_t Strikeout = 8;
constexpr std::int32_t AllStyles = Bold | Italic | Underline | Strikeout;

constexpr double MillimetresPerInch = 25.4;

struct FontFamily {
    std::u16string name;
};

struct Font {
    std::shared_ptr<const FontFace> face;
    double size;
    Unit unit;
    std::int32_t style;
};

struct Brush {
    Color color;
};

using Families = Handles<GpFontFamily, FontFamily>;
using Fonts = Handles<GpFont, Font>;
using Brushes = Handles<GpBrush, Brush>;

double PixelsPer(Unit unit, double dotsPerInch) {
    switch (unit) {
    case Unit::Point:
        return dotsPerInch / 72;
    case Unit::Inch:
        return dotsPerInch;
    case Unit::Document:
        return dotsPerInch / 300;
    case Unit::Millimeter:
        return dotsPerInch / MillimetresPerInch;
    default:
        return 1;
    }
}

// What there is of `length` units, or up to the first zero; all up to there for a length of -1.
std::u16string_view TextUpToZero(const char16_t* text, std::int32_t length) {
    std::size_t count = 0;
    while ((length < 0 || count < static_cast<std::size_t>(length)) && text[count] != 0) {
        ++count;
    }
    return {text, count};
}

bool AreFinite(const FlatRectangle& rectangle) {
    return std::isfinite(rectangle.x) && std::isfinite(rectangle.y) && std::isfinite(rectangle.width) &&
           std::isfinite(rectangle.height);
}

} // namespace

// `collection` must be null: the fonts that are installed.
FLAT_EXPORT Status FLAT_CALL GdipCreateFontFamilyFromName(const char16_t* name, void* collection,
                                                          GpFontFamily** family) {
    return Guarded([&] {
        if (name == nullptr || family == nullptr) {
            return Status::InvalidParameter;
        }
        if (collection != nullptr) {
            return Status::NotImplemented;
        }
        if (!HasFontFamily(name)) {
            return Status::FontFamilyNotFound;
        }
        *family = Families::Add(std::make_shared<FontFamily>(FontFamily{name}));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDeleteFontFamily(GpFontFamily* family) {
    return Guarded([&] { return Families::Remove(family); });
}

FLAT_EXPORT Status FLAT_CALL GdipCreateFont(GpFontFamily* familyHandle, float size, std::int32_t style, Unit unit,
                                            GpFont** font) {
    return Guarded([&] {
        const auto family = Families::Find(familyHandle);
        if (family == nullptr || font == nullptr || !(size > 0) || !std::isfinite(size) || (style & ~AllStyles) != 0 ||
            unit < Unit::World || unit > Unit::Millimeter || unit == Unit::Display) {
            return Status::InvalidParameter;
        }
        auto face = OpenFontFace(family->name, (style & Bold) != 0, (style & Italic) != 0);
        if (!face.Ok()) {
            return face.GetStatus();
        }
        *font = Fonts::Add(std::make_shared<Font>(Font{std::move(*face), size, unit, style}));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDeleteFont(GpFont* font) {
    return Guarded([&] { return Fonts::Remove(font); });
}

// `color` is 0xAARRGGBB.
FLAT_EXPORT Status FLAT_CALL GdipCreateSolidFill(Color color, GpBrush** brush) {
    return Guarded([&] {
        if (brush == nullptr) {
            return Status::InvalidParameter;
        }
        *brush = Brushes::Add(std::make_shared<Brush>(Brush{color}));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDeleteBrush(GpBrush* brush) {
    return Guarded([&] { return Brushes::Remove(brush); });
}

// The text starts at the rectangle's corner and is neither wrapped nor clipped: a width or height other than 0, or a
// format, is not implemented. Always smooth, whatever the smoothing mode; where glyphs overlap, a translucent colour
// falls once.
FLAT_EXPORT Status FLAT_CALL GdipDrawString(GpGraphics* graphicsHandle, const char16_t* text, std::int32_t length,
                                            GpFont* fontHandle, const FlatRectangle* rectangle, const void* format,
                                            GpBrush* brushHandle) {
    return Guarded([&] {
        const auto graphics = FindGraphics(graphicsHandle);
        const auto font = Fonts::Find(fontHandle);
        const auto brush = Brushes::Find(brushHandle);
        if (graphics == nullptr || font == nullptr || brush == nullptr || text == nullptr || rectangle == nullptr ||
            !AreFinite(*rectangle)) {
            return Status::InvalidParameter;
        }
        if (format != nullptr || rectangle->width != 0 || rectangle->height != 0) {
            return Status::NotImplemented;
        }
        const std::lock_guard lock(graphics->mutex);
        const TextStyle style{.size = font->size * PixelsPer(font->unit, graphics->surface->DotsPerInch()),
                              .isUnderlined = (font->style & Underline) != 0,
                              .isStruckOut = (font->style & Strikeout) != 0};
        const std::vector<Edge> outline = TextOutline(*font->face, TextUpToZero(text, length), style,
                                                      {rectangle->x, rectangle->y}, graphics->state.world);
        return PaintOn(*graphics, BoundsOf(outline), [&](Canvas& canvas) {
            Fill(canvas, outline, brush->color, Edges::Smooth);
            return Status::Ok;
        });
    });
}

} // namespace imaginglibrary
