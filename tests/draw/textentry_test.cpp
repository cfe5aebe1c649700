// The table of the window for entering text, without a window.
#include "draw/textentrylayout.h"

#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/textentry.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(TextEntryTable, IsAsExpected) { tests::ExpectTable(textentry::TextEntryLayout, tests::ExpectedTextEntry()); }

TEST(TextEntryTable, NoControlHasAFontOfItsOwn) {
    EXPECT_TRUE(textentry::TextEntryLayout.fonts.empty());
    for (const Control& control : textentry::TextEntryControls) {
        EXPECT_EQ(control.font, NoFont) << control.id;
    }
}

} // namespace
