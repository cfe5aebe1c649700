// Property items: what a file tells about its picture (camera, date, title and the like), under the platform's tags.
#include "imaginglibrary/core/properties.h"

#include <algorithm>
#include <cstring>

namespace imaginglibrary {

namespace {

template <class Number> Property NumberProperty(std::uint32_t tag, PropertyType type, Number number) {
    Property property{tag, type, std::vector<std::uint8_t>(sizeof number)};
    std::memcpy(property.value.data(), &number, sizeof number);
    return property;
}

} // namespace

Property AsciiProperty(std::uint32_t tag, std::string_view text) {
    Property property{tag, PropertyType::Ascii, {text.begin(), text.end()}};
    property.value.push_back(0);
    return property;
}

Property ShortProperty(std::uint32_t tag, std::uint16_t number) {
    return NumberProperty(tag, PropertyType::Short, number);
}

Property LongProperty(std::uint32_t tag, std::uint32_t number) {
    return NumberProperty(tag, PropertyType::Long, number);
}

const Property* PropertyList::Find(std::uint32_t tag) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Property& item) { return item.tag == tag; });
    return found == items_.end() ? nullptr : &*found;
}

void PropertyList::Set(Property property) {
    if (const Property* found = Find(property.tag)) {
        items_[static_cast<std::size_t>(found - items_.data())] = std::move(property);
    } else {
        items_.push_back(std::move(property));
    }
}

void PropertyList::Add(Property property) {
    if (Find(property.tag) == nullptr) {
        items_.push_back(std::move(property));
    }
}

void PropertyList::RemoveIf(const std::function<bool(const Property&)>& isUnwanted) {
    std::erase_if(items_, isUnwanted);
}

} // namespace imaginglibrary
