// What codecs and operations pass to each other: a description of a picture, and rows read from the top.
#pragma once

#include "imaginglibrary/core/damage.h"
#include "imaginglibrary/core/pixelformat.h"
#include "imaginglibrary/core/properties.h"
#include "imaginglibrary/core/status.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace imaginglibrary {

// What the platform assumes where a picture does not tell its dots per inch: the screen's.
inline constexpr double AssumedDotsPerInch = 96;

constexpr double DotsPerInchOrAssumed(double dotsPerInch) { return dotsPerInch > 0 ? dotsPerInch : AssumedDotsPerInch; }

// Dots per inch. Zero means that the file says nothing usable.
struct Resolution {
    double horizontal = 0;
    double vertical = 0;
};

struct PictureInfo {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    PixelFormat format = PixelFormat::Undefined;
    Palette palette;
    Resolution resolution;
};

// One pass over a picture's rows. Belongs to one thread at a time.
class RowReader {
  public:
    virtual ~RowReader() = default;

    // Fills `row` with the next row from the top: BytesPerRow(format, width) bytes. After a status other than Ok, or
    // after the last row, the reader must not be asked again.
    virtual Status ReadRow(std::uint8_t* row) = 0;
};

class RowWatch;
struct ScaledPicture;

// Anything with rows. The legal order of calls is Info* (OpenRows ReadRow*)*. Immutable: several threads may call it,
// and several readers may be under way at once. A reader keeps alive whatever it needs.
class PixelSource {
  public:
    virtual ~PixelSource() = default;
    virtual const PictureInfo& Info() const = 0;
    virtual Result<std::unique_ptr<RowReader>> OpenRows() const = 0;

    // Whether rows can be had from the bottom up as cheaply as from the top.
    virtual bool HasRowsFromBottom() const { return false; }

    // Where they can: a reader that begins with the last row.
    virtual Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const { return Status::NotImplemented; }

    // Reads what must be read as a whole before there is a first row, telling `watch`, which may be null. For those who
    // want to know how far that is; opening rows does it too.
    virtual Status Prepare(const std::shared_ptr<RowWatch>& /*watch*/) const { return Status::Ok; }

    // The same picture at the smallest scale that can be had cheaply and is still at least `width` by `height`; nothing
    // where there is no such shortcut.
    virtual std::optional<ScaledPicture> ReducedTo(std::uint32_t width, std::uint32_t height) const;
};

// A picture at a smaller scale.
struct ScaledPicture {
    std::unique_ptr<PixelSource> picture;
    // What the sides were multiplied by. Where that gives no whole number, the last column or row lies partly outside
    // the picture.
    double scale;
};

inline std::optional<ScaledPicture> PixelSource::ReducedTo(std::uint32_t /*width*/, std::uint32_t /*height*/) const {
    return std::nullopt;
}

// A picture in an open file, of which only the header was read when it was made.
class Decoder : public PixelSource {
  public:
    // What the file tells about the picture besides its pixels.
    const PropertyList& Properties() const { return properties_; }

    // What becomes of damage in the file's image data; null for a format in which it is always undecodable.
    virtual std::shared_ptr<FileDamage> Damage() const { return nullptr; }

  protected:
    PropertyList properties_; // filled when the file is opened, unchanged from then on
};

} // namespace imaginglibrary
