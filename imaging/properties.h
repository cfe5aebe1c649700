// The properties that a file holds about its picture: copying them from image to image, and listing them.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/outcome.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix {

// All property items of one image, in one block, which must live as long as an item of it is used.
class PropertyBlock {
  public:
    // Not looked at: whether the size could be asked for.
    explicit PropertyBlock(ImageHandle image);

    // 0 where the items could not be read.
    std::uint32_t Count() const { return status_ == 0 ? count_ : 0; }
    PropertyItem Item(std::uint32_t index) const;

  private:
    std::uint32_t bytes_ = 0;
    std::uint32_t count_ = 0;
    std::vector<std::uint8_t> block_;
    FlatStatus status_ = 0;
};

// The item of one tag, which must live as long as its value is used.
class PropertyValue {
  public:
    PropertyValue(ImageHandle image, std::uint32_t tag);

    // The imaging library's; without success there is no item.
    FlatStatus Status() const { return status_; }
    PropertyItem Item() const;

  private:
    std::vector<std::uint8_t> block_;
    FlatStatus status_ = 0;
};

// A label for a tag, or its decimal number. The tag of "Copyright" has no label: it comes out as 33432.
std::string PropertyTagName(std::uint32_t tag);

// An item's text: up to its first NUL, and never beyond its length.
std::string PropertyText(const PropertyItem& item);

// One line: the label and, behind tabs, the values of texts, single 16-bit numbers and 32-bit numbers. A value of bytes
// shows as one byte more than it has, none of them its own.
std::string PropertyLine(const PropertyItem& item);

// Sets every item of one image on another, where the imaging library takes it, and hands on what no item tells, where
// the library can. Always Done.
StatusValue CopyImageProperties(ImageHandle source, ImageHandle destination);

// The tags of an image's items. A zero handle leaves the list as it is. Always Done.
StatusValue GetPropertyIdList(ImageHandle image, std::vector<std::uint32_t>& tags);

// Appends a line per item of a file to `list`, each but the first behind CR and LF.
Outcome ListProperties(const std::string& name, std::string& list, const Wishes& wishes);

// As established: always Done. `error` is set where no session could be started, and only there.
StatusValue EnumerateImageProperties(const std::string& name, std::string& error, std::string& list);

} // namespace lumbrix
