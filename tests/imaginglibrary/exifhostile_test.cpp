// EXIF blocks whose directories and values stand in each other.
#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "tests/support/exifmaker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace std::string_literals;

constexpr unsigned OrientationTag = 0x0112;
constexpr unsigned MakerTag = 0x010F;

std::vector<std::uint8_t> BlockBytes(const std::string& text) { return {text.begin(), text.end()}; }

// The main directory stands at 8 with two entries, of which the first points to where an EXIF directory is to stand.
std::string BlockPointingTo(std::uint32_t exif) {
    const std::vector<ExifField> main{{0x8769, 4, 1, NumberBytes(false, exif, 4)}, {OrientationTag, 3, 1, "\6\0"s}};
    return "II\x2A\0\x08\0\0\0"s + MakeDirectory(false, main, 8, 0) + std::string(6, '\0');
}

TEST(HostileExif, DirectoryInTheMainOneIsNotEdited) {
    for (std::uint32_t at = 8; at < 38; ++at) {
        EXPECT_FALSE(ExifEditor::Open(BlockBytes(BlockPointingTo(at)))) << at;
    }
    EXPECT_TRUE(ExifEditor::Open(BlockBytes(BlockPointingTo(38))));
}

// At 20 stands a number of entries of 0, and its directory ends in the entry that is to be taken out.
TEST(HostileExif, OrientationIsTakenOutOfABlockWithADirectoryInIt) {
    PropertyList items;
    items.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(BlockBytes(BlockPointingTo(20))));
    items.Set(ShortProperty(OrientationTag, 6));
    RemoveOrientation(items);
    EXPECT_EQ(items.Find(OrientationTag), nullptr);
    EXPECT_EQ(items.SourceExif(), nullptr);
}

TEST(HostileExif, ValueThatStandsInADirectoryIsNotOverwritten) {
    const std::vector<ExifField> main{{MakerTag, 2, 8, NumberBytes(false, 22, 4)}, {OrientationTag, 3, 1, "\6\0"s}};
    const auto block = BlockBytes("II\x2A\0\x08\0\0\0"s + MakeDirectory(false, main, 8, 0));
    auto editor = ExifEditor::Open(block);
    ASSERT_TRUE(editor);
    editor->Set(AsciiProperty(MakerTag, "another"));
    ASSERT_EQ(editor->Block().size(), block.size() + 8);
    EXPECT_EQ(std::vector(editor->Block().begin() + 22, editor->Block().begin() + 38),
              std::vector(block.begin() + 22, block.end()));
    EXPECT_EQ(std::string(editor->Block().end() - 8, editor->Block().end()), "another\0"s);
}

} // namespace
