// Property items for tests, and ways to look at them.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace tests {

// An item whose value is these numbers in the machine's byte order.
template <class Number> imaginglibrary::Property NumbersProperty(std::uint32_t tag, imaginglibrary::PropertyType type,
                                                                 std::initializer_list<Number> numbers) {
    imaginglibrary::Property property{tag, type, std::vector<std::uint8_t>(numbers.size() * sizeof(Number))};
    std::memcpy(property.value.data(), numbers.begin(), property.value.size());
    return property;
}

inline imaginglibrary::Property BytesProperty(std::uint32_t tag, imaginglibrary::PropertyType type,
                                              const std::string& bytes) {
    return {tag, type, {bytes.begin(), bytes.end()}};
}

inline imaginglibrary::PropertyList ListOf(const std::vector<imaginglibrary::Property>& items) {
    imaginglibrary::PropertyList list;
    for (const auto& item : items) {
        list.Add(item);
    }
    return list;
}

inline std::vector<std::uint32_t> TagsOf(const imaginglibrary::PropertyList& list) {
    std::vector<std::uint32_t> tags;
    for (const auto& item : list.Items()) {
        tags.push_back(item.tag);
    }
    return tags;
}

// The items of a file in memory; fails the test where it does not open.
inline imaginglibrary::PropertyList PropertiesIn(const imaginglibrary::Codec& codec, const std::string& bytes) {
    const auto opened = OpenBytes(codec, bytes);
    EXPECT_TRUE(opened.Ok());
    return opened.Ok() ? (*opened)->Properties() : imaginglibrary::PropertyList();
}

// The file that a codec makes of a small picture with these items.
inline std::string WrittenWith(const imaginglibrary::Codec& codec, const imaginglibrary::PropertyList& properties,
                               imaginglibrary::PixelFormat format = imaginglibrary::PixelFormat::Rgb24) {
    MemoryOutput file;
    EXPECT_EQ(codec.write(*MakePicture(format, 5, 3), properties, {}, file), imaginglibrary::Status::Ok);
    EXPECT_EQ(file.Commit(), imaginglibrary::Status::Ok);
    return file.Bytes();
}

// Expects every one of the items in the list, whatever else is in it.
inline void ExpectItems(const imaginglibrary::PropertyList& list, const std::vector<imaginglibrary::Property>& items) {
    for (const auto& item : items) {
        const auto* found = list.Find(item.tag);
        ASSERT_NE(found, nullptr) << std::hex << item.tag;
        EXPECT_EQ(static_cast<int>(found->type), static_cast<int>(item.type)) << std::hex << item.tag;
        EXPECT_EQ(found->value, item.value) << std::hex << item.tag;
    }
}

} // namespace tests
