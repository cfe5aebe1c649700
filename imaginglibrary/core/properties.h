// Property items: what a file tells about its picture (camera, date, title and the like), under the platform's tags.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace imaginglibrary {

enum class PropertyType : std::uint16_t {
    Byte = 1,
    Ascii = 2, // with its terminating NUL
    Short = 3,
    Long = 4,
    Rational = 5, // two unsigned 32-bit numbers
    Undefined = 7,
    SLong = 9,
    SRational = 10, // two signed 32-bit numbers
};

// The value's numbers are in the machine's byte order and lie one behind the other.
struct Property {
    std::uint32_t tag;
    PropertyType type;
    std::vector<std::uint8_t> value;

    friend bool operator==(const Property&, const Property&) = default;
};

// Makes an item out of a text, with its NUL, or of one number.
Property AsciiProperty(std::uint32_t tag, std::string_view text);
Property ShortProperty(std::uint32_t tag, std::uint16_t number);
Property LongProperty(std::uint32_t tag, std::uint32_t number);

// The items of one picture in the order in which they came. A tag stands in it once.
class PropertyList {
  public:
    const std::vector<Property>& Items() const { return items_; }

    // Null where there is no item of the tag.
    const Property* Find(std::uint32_t tag) const;

    // A new item goes to the end; one of a tag that is there takes its place.
    void Set(Property property);

    // Like Set, but an item that is there already stays: the first of a file's several sources counts.
    void Add(Property property);

    void RemoveIf(const std::function<bool(const Property&)>& isUnwanted);

    // The EXIF block that items were read from, as it stood in the file; null where there is none. It goes along with
    // the list, so that a writer can leave as it was what no item has changed, and what no item tells of.
    using Block = std::shared_ptr<const std::vector<std::uint8_t>>;
    const Block& SourceExif() const { return sourceExif_; }
    void SetSourceExif(Block block) { sourceExif_ = std::move(block); }

  private:
    std::vector<Property> items_;
    Block sourceExif_;
};

} // namespace imaginglibrary
