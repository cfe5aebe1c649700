// The properties that a file holds about its picture: copying them from image to image, and listing them.
#include "imaging/properties.h"

#include "imaging/blank.h"
#include "imaging/course.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/gdiplus/extensions.h"

#include <algorithm>
#include <cstring>

namespace lumbrix {

namespace {

struct TagLabel {
    std::uint32_t tag;
    const char* label;
};

constexpr TagLabel TagLabels[] = {
    {306, "DateTime"},
    {271, "Camera Manufacturer"},
    {272, "Camera Type"},
    {36867, "Original DateTime"},
    {36868, "Data DateTime"},
    {274, "Orientation"},
    {256, "Image Width"},
    {257, "Image Height"},
    {282, "Horizontal Resolution"},
    {283, "Vertical Resolution"},
    {296, "Resolution Unit"},
    {800, "Image Title"},
    {315, "Artist"},
};

// The value's numbers lie at any address.
template <class Number> Number NumberAt(const void* value, std::size_t index) {
    Number number;
    std::memcpy(&number, static_cast<const std::uint8_t*>(value) + index * sizeof number, sizeof number);
    return number;
}

// What a value of bytes shows as: the high byte of its address, and a zero for each byte that it has.
std::string ByteBlockToText(const PropertyItem& item) {
    const auto address = reinterpret_cast<std::uintptr_t>(item.value);
    constexpr unsigned HighByteShift = (sizeof address - 1) * 8;
    return static_cast<char>(address >> HighByteShift) + std::string(item.length, '\0');
}

} // namespace

PropertyBlock::PropertyBlock(ImageHandle image) {
    GdipGetPropertySize(image, &bytes_, &count_);
    block_.resize(bytes_ + 1); // never without an address
    status_ = GdipGetAllPropertyItems(image, bytes_, count_, block_.data());
}

PropertyItem PropertyBlock::Item(std::uint32_t index) const {
    PropertyItem item;
    std::memcpy(&item, block_.data() + index * sizeof item, sizeof item);
    return item;
}

PropertyValue::PropertyValue(ImageHandle image, std::uint32_t tag) {
    std::uint32_t bytes = 0;
    GdipGetPropertyItemSize(image, tag, &bytes);
    block_.resize(std::max<std::size_t>(bytes, sizeof(PropertyItem)));
    status_ = GdipGetPropertyItem(image, tag, bytes, block_.data());
}

PropertyItem PropertyValue::Item() const {
    PropertyItem item;
    std::memcpy(&item, block_.data(), sizeof item);
    return item;
}

std::string PropertyTagName(std::uint32_t tag) {
    for (const TagLabel& known : TagLabels) {
        if (known.tag == tag) {
            return known.label;
        }
    }
    return std::to_string(tag);
}

std::string PropertyText(const PropertyItem& item) {
    const auto* text = static_cast<const char*>(item.value);
    return {text, strnlen(text, item.length)};
}

std::string PropertyLine(const PropertyItem& item) {
    std::string line = PropertyTagName(item.id);
    if (item.type == PropertyTypeAscii) {
        line += '\t' + PropertyText(item);
    } else if (item.type == PropertyTypeShort && item.length == sizeof(std::int16_t)) {
        line += '\t' + std::to_string(NumberAt<std::int16_t>(item.value, 0));
    } else if (item.type == PropertyTypeByte) {
        line += '\t' + ByteBlockToText(item);
    } else if (item.type == PropertyTypeLong) {
        for (std::size_t i = 0; i < item.length / sizeof(std::int32_t); ++i) {
            line += '\t' + std::to_string(NumberAt<std::int32_t>(item.value, i));
        }
    }
    return line;
}

StatusValue CopyImageProperties(ImageHandle source, ImageHandle destination) {
    const PropertyBlock block(source);
    for (std::uint32_t i = 0; i < block.Count(); ++i) {
        const PropertyItem item = block.Item(i);
        GdipSetPropertyItem(destination, &item);
    }
    CarryMetadata(source, destination);
    return Done;
}

StatusValue GetPropertyIdList(ImageHandle image, std::vector<std::uint32_t>& tags) {
    if (image == nullptr) {
        return Done;
    }
    std::uint32_t count = 0;
    GdipGetPropertyCount(image, &count);
    tags.resize(count);
    GdipGetPropertyIdList(image, count, tags.data());
    return Done;
}

Outcome ListProperties(const std::string& name, std::string& list, const Wishes& wishes) {
    Course course(wishes);
    if (!course.IsEstablished() && IsBlank(name)) {
        course.Fail(Step::Names, BadName);
        return course.Result();
    }
    OwnedImage image;
    if (!course.BeginChecked() || (!course.Load(name, image) && !course.IsEstablished())) {
        return course.Result();
    }
    const PropertyBlock block(image.Get());
    for (std::uint32_t i = 0; i < block.Count(); ++i) {
        list += (list.empty() ? "" : "\r\n") + PropertyLine(block.Item(i));
    }
    return course.Result();
}

StatusValue EnumerateImageProperties(const std::string& name, std::string& error, std::string& list) {
    if (ListProperties(name, list, AsEstablished).end.step == Step::Session) {
        error = "Error initializing GDI+";
    }
    return Done;
}

} // namespace lumbrix
