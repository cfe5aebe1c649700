// Letter case of the words that are compared.
#include "base/lettercase.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(LetterCase, ChangesTheLettersFromAToZAlone) {
    EXPECT_EQ(UpperCase("azAZ@[`{09.\xE4"), "AZAZ@[`{09.\xE4");
    EXPECT_EQ(LowerCase("azAZ@[`{09.\xC4"), "azaz@[`{09.\xC4");
    EXPECT_EQ(UpperCase(""), "");
    EXPECT_EQ(LowerCase(""), "");
}

} // namespace
