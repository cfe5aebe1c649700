// Handles, of which the lower 20 bits number a slot and the others count how often it was used.
#include "imaginglibrary/flat/handles.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using Table = HandleTable<int>;

constexpr Table::Handle HandleOf(Table::Handle slot, Table::Handle use) { return use << 20 | slot; }

TEST(Handles, CountSlotsAndUsesFromOne) {
    Table table;
    EXPECT_EQ(table.Add(std::make_shared<int>(7)), HandleOf(1, 1));
    EXPECT_EQ(table.Add(std::make_shared<int>(8)), HandleOf(2, 1));
    EXPECT_EQ(*table.Find(HandleOf(1, 1)), 7);
    EXPECT_EQ(*table.Find(HandleOf(2, 1)), 8);
}

TEST(Handles, ForeignOnesFindNothing) {
    Table table;
    table.Add(std::make_shared<int>(7));
    for (const Table::Handle foreign :
         {HandleOf(0, 0), HandleOf(0, 1), HandleOf(2, 1), HandleOf(1, 0), HandleOf(1, 2)}) {
        EXPECT_EQ(table.Find(foreign), nullptr);
        EXPECT_FALSE(table.Remove(foreign));
    }
}

TEST(Handles, SlotThatWasFreedFirstIsUsedFirstAndUnderAnotherHandle) {
    Table table;
    for (int i = 0; i < 3; ++i) {
        table.Add(std::make_shared<int>(i));
    }
    EXPECT_TRUE(table.Remove(HandleOf(3, 1)));
    EXPECT_TRUE(table.Remove(HandleOf(1, 1)));
    EXPECT_FALSE(table.Remove(HandleOf(1, 1)));
    EXPECT_EQ(table.Add(std::make_shared<int>(10)), HandleOf(3, 2));
    EXPECT_EQ(table.Add(std::make_shared<int>(11)), HandleOf(1, 2));
    EXPECT_EQ(table.Add(std::make_shared<int>(12)), HandleOf(4, 1));
    EXPECT_EQ(table.Find(HandleOf(3, 1)), nullptr);
    EXPECT_EQ(*table.Find(HandleOf(3, 2)), 10);
    EXPECT_EQ(*table.Find(HandleOf(2, 1)), 1);
}

TEST(Handles, RemovedObjectGoesAtOnce) {
    Table table;
    const auto object = std::make_shared<int>(7);
    const auto handle = table.Add(object);
    EXPECT_EQ(object.use_count(), 2);
    EXPECT_TRUE(table.Remove(handle));
    EXPECT_EQ(object.use_count(), 1);
}

TEST(Handles, UsesBeginAnewBehindTheLastOf4095) {
    Table table;
    for (Table::Handle use = 1; use <= 4095; ++use) {
        EXPECT_EQ(table.Add(std::make_shared<int>()), HandleOf(1, use));
        EXPECT_TRUE(table.Remove(HandleOf(1, use)));
    }
    EXPECT_EQ(table.Add(std::make_shared<int>()), HandleOf(1, 0));
}

TEST(Handles, ThoseBeforeAClearingFindNothingBehindIt) {
    Table table;
    table.Remove(table.Add(std::make_shared<int>(1)));
    const auto object = std::make_shared<int>(2);
    EXPECT_EQ(table.Add(object), HandleOf(1, 2));
    EXPECT_EQ(table.Add(std::make_shared<int>(3)), HandleOf(2, 1));
    table.Clear();
    EXPECT_EQ(object.use_count(), 1);
    EXPECT_EQ(table.Find(HandleOf(1, 2)), nullptr);
    EXPECT_EQ(table.Add(std::make_shared<int>(4)), HandleOf(1, 3)) << "behind the most used of all";
    EXPECT_EQ(table.Add(std::make_shared<int>(5)), HandleOf(2, 3));
}

TEST(Handles, AMillionLessOneLiveAtATime) {
    Table table;
    const auto object = std::make_shared<int>();
    for (int i = 1; i < 1 << 20; ++i) {
        table.Add(object);
    }
    EXPECT_THROW(table.Add(object), std::bad_alloc);
    EXPECT_TRUE(table.Remove(HandleOf(5, 1)));
    EXPECT_EQ(table.Add(object), HandleOf(5, 2));
}

} // namespace
