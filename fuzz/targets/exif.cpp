// Reads the input as an EXIF block, changes it as its last bytes tell, and reads what is written then.
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/bytefiles.h"

#include <span>
#include <vector>

namespace {

using namespace imaginglibrary;

using Bytes = std::vector<std::uint8_t>;

PropertyList ItemsOf(std::span<const std::uint8_t> block) {
    PropertyList items;
    for (Property& item : ReadExif(block, ExifThumbnail::Keep, items)) {
        items.Add(std::move(item));
    }
    return items;
}

bool IsWritten(const Property& item) {
    const std::size_t element = ElementBytes(item.type);
    return PlaceOf(item) != ExifPlace::Nowhere && PlaceOf(item) != ExifPlace::Thumbnail && element != 0 &&
           !item.value.empty() && item.value.size() % element == 0;
}

// A block made anew says what the items say, and made a second time it is the same.
void CheckRoundTrip(const PropertyList& items, std::endian order) {
    ExifBlock block(order);
    for (const Property& item : items.Items()) {
        block.Add(item);
    }
    const Bytes made = block.MakeBlock();
    fuzz::Require(made.empty() == block.IsEmpty(), "there is a block where there are items");
    const PropertyList read = ItemsOf(made);
    if (read.Items().size() == MaximumMetadataEntries) {
        return; // what is read has its limit
    }
    for (Property item : items.Items()) {
        if (!IsWritten(item)) {
            continue;
        }
        TerminateText(item);
        const Property* found = read.Find(item.tag);
        fuzz::Require(found != nullptr && *found == item, "what is written is read again");
    }
    ExifBlock again(order);
    for (const Property& item : read.Items()) {
        again.Add(item);
    }
    fuzz::Require(again.MakeBlock() == made, "a block made of its own items is the same");
}

void CheckShortened(const PropertyList& items, std::size_t mostBytes) {
    ExifBlock block(std::endian::native);
    for (const Property& item : items.Items()) {
        block.Add(item);
    }
    block.Shorten(mostBytes);
    fuzz::Require(block.MakeBlock().size() <= mostBytes, "a block is made as short as it must be");
}

// A number of bytes for a tag that the block may have.
Property ItemFrom(fuzz::Choices& choices, const PropertyList& items) {
    Property item{choices.Of<std::uint16_t>(), static_cast<PropertyType>(choices.Below(13)), {}};
    if (!items.Items().empty() && choices.Coin()) {
        const Property& known = items.Items()[choices.Below(std::min<std::size_t>(items.Items().size(), 256))];
        item.tag = known.tag;
        item.type = known.type;
    }
    const std::size_t bytes = choices.Byte();
    item.value.assign(bytes, choices.Byte());
    return item;
}

void EditBlock(const PropertyList& source, fuzz::Choices& choices) {
    PropertyList items = source;
    for (std::size_t changes = choices.Below(4); changes > 0; --changes) {
        items.Set(ItemFrom(choices, items));
    }
    auto editor = EditedExif(items, items.Items(), {});
    if (!editor) {
        return;
    }
    for (std::size_t removals = choices.Below(4); removals > 0; --removals) {
        editor->Remove(ItemFrom(choices, items).tag);
    }
    if (choices.Coin()) {
        editor->DropThumbnail();
    }
    editor->MainEntries();
    ItemsOf(editor->Block());
    fuzz::Require(editor->Block().size() <= source.SourceExif()->size() + 65536, "a block grows by what was added");
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::size_t ChoiceBytes = 16;
    const std::size_t blockBytes = count > ChoiceBytes ? count - ChoiceBytes : 0;
    fuzz::Choices choices(bytes + blockBytes, count - blockBytes);
    const std::span block(bytes, blockBytes);

    PropertyList items = ItemsOf(block);
    CheckRoundTrip(items, choices.Coin() ? std::endian::little : std::endian::big);

    items.SetSourceExif(std::make_shared<const Bytes>(block.begin(), block.end()));
    EditBlock(items, choices);
    FitToPicture(items, choices.Of<std::uint16_t>(), 7);
    RemoveOrientation(items);
    CheckShortened(items, choices.Of<std::uint16_t>() % 4096);

    PropertyList ofFile;
    ReadTiffProperties(tests::MemoryInput({block.begin(), block.end()}), ofFile);
}
