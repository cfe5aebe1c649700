// The other half of the fake module: bitmaps, surfaces, text and properties. Every handle that it makes is a number of
// its own: bitmap 33, clone 44, surface 55, family 66, font 77, brush 88.
#include "imaging/gdiplus/flattypes.h"
#include "tests/imaging/fakerecord.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

using namespace lumbrix;

struct Item {
    std::uint32_t tag;
    std::uint16_t type;
    std::string value;
};

std::int32_t pixelFormat = 0x26200A;
std::vector<Item> properties;
std::string propertiesSet;

template <class... Numbers> std::string Text(const void* handle, Numbers... numbers) {
    std::string text = Number(handle);
    char buffer[40];
    ((std::snprintf(buffer, sizeof buffer, " %g", static_cast<double>(numbers)), text += buffer), ...);
    return text;
}

// Gives out a handle where the call succeeds.
std::int32_t Make(void** handle, std::uintptr_t number, std::int32_t status) {
    if (status == 0) {
        *handle = reinterpret_cast<void*>(number);
    }
    return status;
}

std::uint32_t BlockBytes() {
    std::size_t bytes = 0;
    for (const Item& item : properties) {
        bytes += sizeof(PropertyItem) + item.value.size();
    }
    return static_cast<std::uint32_t>(bytes);
}

std::uint8_t* PutItem(const Item& item, std::uint8_t* record, std::uint8_t* value) {
    const PropertyItem flat{item.tag, static_cast<std::uint32_t>(item.value.size()), item.type, value};
    std::memcpy(record, &flat, sizeof flat);
    std::memcpy(value, item.value.data(), item.value.size());
    return value + item.value.size();
}

const Item* FindItem(std::uint32_t tag) {
    for (const Item& item : properties) {
        if (item.tag == tag) {
            return &item;
        }
    }
    return nullptr;
}

} // namespace

FAKE void FakeFormat(std::int32_t format) { pixelFormat = format; }
FAKE void FakeClearProperties() {
    properties.clear();
    propertiesSet.clear();
}
FAKE void FakeAddProperty(std::uint32_t tag, std::uint16_t type, const char* value, std::uint32_t length) {
    properties.push_back({tag, type, {value, length}});
}
FAKE const char* FakePropertiesSet() { return propertiesSet.c_str(); }

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCloneImage(ImageHandle image, ImageHandle* clone) {
    const std::int32_t status = Record("GdipCloneImage", Number(image));
    return image == nullptr ? 2 : Make(clone, 44, status);
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImagePixelFormat(ImageHandle image, std::int32_t* format) {
    *format = pixelFormat;
    return Record("GdipGetImagePixelFormat", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height,
                                                              std::int32_t stride, std::int32_t format, void* pixels,
                                                              ImageHandle* bitmap) {
    return Make(bitmap, 33, Record("GdipCreateBitmapFromScan0", Text(pixels, width, height, stride, format)));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCloneBitmapAreaI(std::int32_t x, std::int32_t y, std::int32_t width,
                                                         std::int32_t height, std::int32_t format, ImageHandle image,
                                                         ImageHandle* clone) {
    return Make(clone, 44, Record("GdipCloneBitmapAreaI", Text(image, x, y, width, height, format)));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipImageRotateFlip(ImageHandle image, std::int32_t code) {
    return Record("GdipImageRotateFlip", Text(image, code));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageGraphicsContext(ImageHandle image, GraphicsHandle* graphics) {
    return Make(graphics, 55, Record("GdipGetImageGraphicsContext", Number(image)));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCreateFromHDC(DeviceContextHandle context, GraphicsHandle* graphics) {
    return Make(graphics, 55, Record("GdipCreateFromHDC", Number(context)));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDeleteGraphics(GraphicsHandle graphics) {
    return Record("GdipDeleteGraphics", Number(graphics));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipSaveGraphics(GraphicsHandle graphics, std::uint32_t* state) {
    *state = 1;
    return Record("GdipSaveGraphics", Number(graphics));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetInterpolationMode(GraphicsHandle graphics, std::int32_t* mode) {
    return Record("GdipGetInterpolationMode", Text(graphics, *mode));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetSmoothingMode(GraphicsHandle graphics, std::int32_t* mode) {
    return Record("GdipGetSmoothingMode", Text(graphics, *mode));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipSetInterpolationMode(GraphicsHandle graphics, std::int32_t mode) {
    return Record("GdipSetInterpolationMode", Text(graphics, mode));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipSetSmoothingMode(GraphicsHandle graphics, std::int32_t mode) {
    return Record("GdipSetSmoothingMode", Text(graphics, mode));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipTranslateWorldTransform(GraphicsHandle graphics, float dx, float dy,
                                                                std::int32_t order) {
    return Record("GdipTranslateWorldTransform", Text(graphics, dx, dy, order));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipRotateWorldTransform(GraphicsHandle graphics, float degrees,
                                                             std::int32_t order) {
    return Record("GdipRotateWorldTransform", Text(graphics, degrees, order));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawImage(GraphicsHandle graphics, ImageHandle image, float x, float y) {
    return Record("GdipDrawImage", Number(graphics) + " " + Text(image, x, y));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawImageRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x,
                                                       std::int32_t y, std::int32_t width, std::int32_t height) {
    return Record("GdipDrawImageRectI", Number(graphics) + " " + Text(image, x, y, width, height));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawImageRectRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x,
                                                           std::int32_t y, std::int32_t width, std::int32_t height,
                                                           std::int32_t sourceX, std::int32_t sourceY,
                                                           std::int32_t sourceWidth, std::int32_t sourceHeight,
                                                           std::int32_t unit, const void* attributes,
                                                           const void* callback, const void* data) {
    const bool isUsual = attributes == nullptr && callback == nullptr && data == nullptr;
    return Record("GdipDrawImageRectRectI",
                  Number(graphics) + " " +
                      Text(image, x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight, unit) +
                      (isUsual ? "" : " with more"));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawImagePointsI(GraphicsHandle graphics, ImageHandle image,
                                                         const IntegerPoint* points, std::int32_t count) {
    return Record("GdipDrawImagePointsI",
                  Number(graphics) + " " +
                      Text(image, points[0].x, points[0].y, points[1].x, points[1].y, points[2].x, points[2].y, count));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawEllipse(GraphicsHandle graphics, PenHandle pen, float x, float y,
                                                    float width, float height) {
    return Record("GdipDrawEllipse", Number(graphics) + " " + Text(pen, x, y, width, height));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDrawString(GraphicsHandle graphics, const char16_t* text, std::int32_t length,
                                                   FontHandle font, const LayoutRectangle* place, const void* format,
                                                   BrushHandle brush) {
    std::string narrow;
    for (std::int32_t i = 0; i < length; ++i) { // all of it must be there to be read
        narrow += text[i] == 0 ? '.' : text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
    }
    return Record("GdipDrawString", Number(graphics) + " '" + narrow + "' " +
                                        Text(font, place->x, place->y, place->width, place->height) +
                                        (format == nullptr ? " " : " with a format ") + Number(brush));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCreateFontFamilyFromName(const char16_t* name, void* collection,
                                                                 FontFamilyHandle* family) {
    const std::string narrow(name, name + std::char_traits<char16_t>::length(name));
    return Make(family, 66, Record("GdipCreateFontFamilyFromName", narrow + (collection == nullptr ? "" : " of some")));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDeleteFontFamily(FontFamilyHandle family) {
    return Record("GdipDeleteFontFamily", Number(family));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCreateFont(FontFamilyHandle family, float size, std::int32_t style,
                                                   std::int32_t unit, FontHandle* font) {
    const std::int32_t status = Record("GdipCreateFont", Text(family, size, style, unit));
    return family == nullptr ? 2 : Make(font, 77, status);
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDeleteFont(FontHandle font) { return Record("GdipDeleteFont", Number(font)); }

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipCreateSolidFill(std::uint32_t color, BrushHandle* brush) {
    char text[12];
    std::snprintf(text, sizeof text, "%08X", color);
    return Make(brush, 88, Record("GdipCreateSolidFill", text));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetPropertySize(ImageHandle image, std::uint32_t* bytes, std::uint32_t* count) {
    *bytes = BlockBytes();
    *count = static_cast<std::uint32_t>(properties.size());
    return Record("GdipGetPropertySize", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetAllPropertyItems(ImageHandle image, std::uint32_t bytes, std::uint32_t count,
                                                            void* block) {
    const std::int32_t status = Record("GdipGetAllPropertyItems", Number(image));
    if (status != 0 || bytes != BlockBytes() || count != properties.size()) {
        return status != 0 ? status : 2;
    }
    auto* record = static_cast<std::uint8_t*>(block);
    auto* value = record + count * sizeof(PropertyItem);
    for (const Item& item : properties) {
        value = PutItem(item, record, value);
        record += sizeof(PropertyItem);
    }
    return 0;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetPropertyItemSize(ImageHandle image, std::uint32_t tag,
                                                            std::uint32_t* bytes) {
    const std::int32_t status = Record("GdipGetPropertyItemSize", Text(image, tag));
    const Item* item = FindItem(tag);
    if (item != nullptr) {
        *bytes = static_cast<std::uint32_t>(sizeof(PropertyItem) + item->value.size());
    }
    return item == nullptr ? 19 : status;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetPropertyItem(ImageHandle image, std::uint32_t tag, std::uint32_t bytes,
                                                        void* block) {
    const std::int32_t status = Record("GdipGetPropertyItem", Text(image, tag, bytes));
    const Item* item = FindItem(tag);
    if (status != 0 || item == nullptr) {
        return status != 0 ? status : 19;
    }
    PutItem(*item, static_cast<std::uint8_t*>(block), static_cast<std::uint8_t*>(block) + sizeof(PropertyItem));
    return 0;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipRemovePropertyItem(ImageHandle image, std::uint32_t tag) {
    return Record("GdipRemovePropertyItem", Text(image, tag));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipSetPropertyItem(ImageHandle image, const PropertyItem* item) {
    propertiesSet += std::to_string(item->id) + " " + std::to_string(item->type) + " " + std::to_string(item->length) +
                     " " + std::string(static_cast<const char*>(item->value), item->length).c_str() + "\n";
    return Record("GdipSetPropertyItem", Text(image, item->id));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetPropertyCount(ImageHandle image, std::uint32_t* count) {
    *count = static_cast<std::uint32_t>(properties.size());
    return Record("GdipGetPropertyCount", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetPropertyIdList(ImageHandle image, std::uint32_t count, std::uint32_t* tags) {
    for (std::uint32_t i = 0; i < count; ++i) {
        tags[i] = properties[i].tag;
    }
    return Record("GdipGetPropertyIdList", Text(image, count));
}
