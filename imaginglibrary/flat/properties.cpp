// Property items of images: sizes, reading, setting, listing.
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"

#include <algorithm>
#include <cstring>

namespace imaginglibrary {

namespace {

// Does `work` with the image behind a handle and its property list as it is now.
template <class Work> Status WithProperties(GpImage* handle, Work work) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        return image == nullptr ? Status::InvalidParameter : work(*image->Properties());
    });
}

std::size_t BlockBytes(const PropertyList& properties) {
    std::size_t bytes = 0;
    for (const Property& property : properties.Items()) {
        bytes += sizeof(PropertyItem) + property.value.size();
    }
    return bytes;
}

// Writes a record at `record` and the value it points to at `value`; gives back the place behind the value.
std::uint8_t* PutItem(const Property& property, std::uint8_t* record, std::uint8_t* value) {
    const PropertyItem item{property.tag, static_cast<std::uint32_t>(property.value.size()),
                            static_cast<std::uint16_t>(property.type), value};
    std::memcpy(record, &item, sizeof item);
    return std::copy(property.value.begin(), property.value.end(), value);
}

} // namespace

FLAT_EXPORT Status FLAT_CALL GdipGetPropertyCount(GpImage* image, std::uint32_t* count) {
    return WithProperties(image, [&](const PropertyList& properties) {
        if (count == nullptr) {
            return Status::InvalidParameter;
        }
        *count = static_cast<std::uint32_t>(properties.Items().size());
        return Status::Ok;
    });
}

// `count` must be that of GdipGetPropertyCount.
FLAT_EXPORT Status FLAT_CALL GdipGetPropertyIdList(GpImage* image, std::uint32_t count, std::uint32_t* tags) {
    return WithProperties(image, [&](const PropertyList& properties) {
        if (tags == nullptr || count != properties.Items().size()) {
            return Status::InvalidParameter;
        }
        std::transform(properties.Items().begin(), properties.Items().end(), tags,
                       [](const Property& property) { return property.tag; });
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipGetPropertySize(GpImage* image, std::uint32_t* bytes, std::uint32_t* count) {
    return WithProperties(image, [&](const PropertyList& properties) {
        if (bytes == nullptr || count == nullptr) {
            return Status::InvalidParameter;
        }
        *bytes = static_cast<std::uint32_t>(BlockBytes(properties));
        *count = static_cast<std::uint32_t>(properties.Items().size());
        return Status::Ok;
    });
}

// `bytes` and `count` must be those of GdipGetPropertySize.
FLAT_EXPORT Status FLAT_CALL GdipGetAllPropertyItems(GpImage* image, std::uint32_t bytes, std::uint32_t count,
                                                     std::uint8_t* block) {
    return WithProperties(image, [&](const PropertyList& properties) {
        if (block == nullptr || count != properties.Items().size() || bytes != BlockBytes(properties)) {
            return Status::InvalidParameter;
        }
        std::uint8_t* record = block;
        std::uint8_t* value = block + count * sizeof(PropertyItem);
        for (const Property& property : properties.Items()) {
            value = PutItem(property, record, value);
            record += sizeof(PropertyItem);
        }
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipGetPropertyItemSize(GpImage* image, std::uint32_t tag, std::uint32_t* bytes) {
    return WithProperties(image, [&](const PropertyList& properties) {
        if (bytes == nullptr) {
            return Status::InvalidParameter;
        }
        const Property* property = properties.Find(tag);
        if (property == nullptr) {
            return Status::PropertyNotFound;
        }
        *bytes = static_cast<std::uint32_t>(sizeof(PropertyItem) + property->value.size());
        return Status::Ok;
    });
}

// `bytes` must be that of GdipGetPropertyItemSize.
FLAT_EXPORT Status FLAT_CALL GdipGetPropertyItem(GpImage* image, std::uint32_t tag, std::uint32_t bytes,
                                                 std::uint8_t* block) {
    return WithProperties(image, [&](const PropertyList& properties) {
        const Property* property = properties.Find(tag);
        if (property == nullptr) {
            return Status::PropertyNotFound;
        }
        if (block == nullptr || bytes != sizeof(PropertyItem) + property->value.size()) {
            return Status::InvalidParameter;
        }
        PutItem(*property, block, block + sizeof(PropertyItem));
        return Status::Ok;
    });
}

// Any tag and type is taken; what a format cannot carry is passed over when the image is saved. Icons and metafiles
// take none.
FLAT_EXPORT Status FLAT_CALL GdipSetPropertyItem(GpImage* handle, const PropertyItem* item) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || item == nullptr || (item->value == nullptr && item->length != 0)) {
            return Status::InvalidParameter;
        }
        if (image->Origin().codec != nullptr && image->Origin().codec->write == nullptr) {
            return Status::PropertyNotSupported;
        }
        const auto* value = static_cast<const std::uint8_t*>(item->value);
        image->SetProperty({item->id, static_cast<PropertyType>(item->type), {value, value + item->length}});
        return Status::Ok;
    });
}

} // namespace imaginglibrary
