// Properties and dates over the fake imaging library: labels, lines, copying, what is left open.
#include "imaging/properties.h"

#include "imaging/datestamp.h"
#include "imaging/gdiplus/bindings.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

class WithProperties : public tests::WithFake {
  protected:
    std::string List(const std::string& before = {}) {
        std::string error;
        std::string list = before;
        EXPECT_EQ(EnumerateImageProperties("a.jpg", error, list), 0);
        EXPECT_EQ(error, "");
        return list;
    }
};

using Properties = WithProperties;
using DateTime = WithProperties;
using DateStamp = WithProperties;

// The bytes of numbers as the machine has them.
template <class Number> std::string Bytes(std::initializer_list<Number> numbers) {
    std::string bytes(numbers.size() * sizeof(Number), '\0');
    std::memcpy(bytes.data(), std::data(numbers), bytes.size());
    return bytes;
}

std::string Line(std::uint32_t tag, std::uint16_t type, const std::string& value) {
    return PropertyLine({tag, static_cast<std::uint32_t>(value.size()), type, value.data()});
}

TEST(PropertyTagName, KnowsItsLabels) {
    const std::pair<std::uint32_t, const char*> labels[] = {{306, "DateTime"},
                                                            {271, "Camera Manufacturer"},
                                                            {272, "Camera Type"},
                                                            {36867, "Original DateTime"},
                                                            {36868, "Data DateTime"},
                                                            {274, "Orientation"},
                                                            {256, "Image Width"},
                                                            {257, "Image Height"},
                                                            {282, "Horizontal Resolution"},
                                                            {283, "Vertical Resolution"},
                                                            {296, "Resolution Unit"},
                                                            {800, "Image Title"},
                                                            {315, "Artist"}};
    for (const auto& [tag, label] : labels) {
        EXPECT_EQ(PropertyTagName(tag), label);
    }
}

TEST(PropertyTagName, GivesTheNumberOfAllOthers) {
    EXPECT_EQ(PropertyTagName(0), "0");
    EXPECT_EQ(PropertyTagName(4294967295u), "4294967295");
}

TEST(PropertyTagName, CopyrightHasNoLabel) { EXPECT_EQ(PropertyTagName(33432), "33432"); }

TEST(PropertyLine, TextsEndAtTheirZeroAndNeverBeyondTheirLength) {
    EXPECT_EQ(Line(306, 2, std::string("2026:11:21 09:30:00\0", 20)), "DateTime\t2026:11:21 09:30:00");
    EXPECT_EQ(Line(306, 2, std::string("ab\0cd\0", 6)), "DateTime\tab");
    EXPECT_EQ(Line(306, 2, ""), "DateTime\t");
    const std::string longer = "within and beyond";
    EXPECT_EQ(PropertyLine({306, 6, 2, longer.data()}), "DateTime\twithin");
}

TEST(PropertyLine, SingleShortShowsSigned) {
    EXPECT_EQ(Line(274, 3, Bytes<std::uint16_t>({6})), "Orientation\t6");
    EXPECT_EQ(Line(5, 3, Bytes<std::uint16_t>({0xFFFE})), "5\t-2");
}

TEST(PropertyLine, SeveralShortsShowNone) {
    EXPECT_EQ(Line(274, 3, Bytes<std::uint16_t>({6, 7})), "Orientation");
    EXPECT_EQ(Line(274, 3, ""), "Orientation");
}

TEST(PropertyLine, EveryLongShowsSigned) {
    EXPECT_EQ(Line(256, 4, Bytes<std::int32_t>({10, -3})), "Image Width\t10\t-3");
    EXPECT_EQ(Line(256, 4, Bytes<std::int32_t>({7}) + "xy"), "Image Width\t7");
}

TEST(PropertyLine, BytesShowAsOneMoreThanThereAreAndNoneOfTheirOwn) {
    const std::string value = "abc";
    const std::string line = Line(20, 1, value);
    ASSERT_EQ(line.size(), 3 + value.size() + 1);
    EXPECT_EQ(line.substr(0, 3), "20\t");
    const auto address = reinterpret_cast<std::uintptr_t>(value.data());
    EXPECT_EQ(static_cast<std::uint8_t>(line[3]), address >> (8 * (sizeof address - 1)));
    EXPECT_EQ(line.substr(4), std::string(3, '\0'));
}

TEST(PropertyLine, OtherTypesStayBare) {
    for (const std::uint16_t type : {5, 7, 9, 10, 0, 99}) {
        EXPECT_EQ(Line(282, type, Bytes<std::int32_t>({1, 2})), "Horizontal Resolution");
    }
}

TEST_F(Properties, AreListedLineByLine) {
    fake_.GiveProperties({{306, 2, std::string("now\0", 4)}, {282, 5, "12345678"}, {274, 3, Bytes<std::int16_t>({1})}});
    EXPECT_EQ(List(), "DateTime\tnow\r\nHorizontal Resolution\r\nOrientation\t1");
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetPropertySize 11",
                                    "GdipGetAllPropertyItems 11", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Properties, ListIsAppendedTo) {
    fake_.GiveProperties({{306, 2, std::string("now\0", 4)}});
    EXPECT_EQ(List("before"), "before\r\nDateTime\tnow");
}

TEST_F(Properties, NoneGiveNoLine) {
    EXPECT_EQ(List(), "");
    EXPECT_EQ(List("before"), "before");
}

TEST_F(Properties, OnlyTheSessionsFailureIsTold) {
    fake_.Answer("GdiplusStartup", 17);
    std::string error = "old";
    std::string list = "before";
    EXPECT_EQ(EnumerateImageProperties("a.jpg", error, list), 0);
    EXPECT_EQ(error, "Error initializing GDI+");
    EXPECT_EQ(list, "before");
    EXPECT_EQ(fake_.Calls(), Calls{"GdiplusStartup"});
}

TEST_F(Properties, FailureOfReadingLeavesTheTextsAndEndsTheSession) {
    fake_.GiveProperties({{306, 2, std::string("now\0", 4)}});
    fake_.Answer("GdipGetAllPropertyItems", 2);
    EXPECT_EQ(List("before"), "before");
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Properties, CopyingIgnoresWhatIsNotTaken) {
    fake_.GiveProperties({{1, 3, "ab"}, {2, 3, "cd"}});
    fake_.Answer("GdipSetPropertyItem#1", 20);
    EXPECT_EQ(CopyImageProperties(reinterpret_cast<void*>(5), reinterpret_cast<void*>(6)), 0);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdipGetPropertySize 5", "GdipGetAllPropertyItems 5", "GdipSetPropertyItem 6 1",
                                    "GdipSetPropertyItem 6 2"}));
}

TEST_F(Properties, CopyingStopsWhereTheyCannotBeRead) {
    fake_.GiveProperties({{1, 3, "ab"}});
    fake_.Answer("GdipGetAllPropertyItems", 2);
    EXPECT_EQ(CopyImageProperties(reinterpret_cast<void*>(5), reinterpret_cast<void*>(6)), 0);
    EXPECT_EQ(fake_.PropertiesSet(), std::vector<std::string>{});
}

TEST_F(Properties, TagsAreListedInAListOfTheirNumber) {
    fake_.GiveProperties({{7, 3, "ab"}, {5, 3, "cd"}, {6, 3, ""}});
    std::vector<std::uint32_t> tags{1, 2, 3, 4, 5};
    EXPECT_EQ(GetPropertyIdList(reinterpret_cast<void*>(5), tags), 0);
    EXPECT_EQ(tags, (std::vector<std::uint32_t>{7, 5, 6}));
    tags = {9};
    EXPECT_EQ(GetPropertyIdList(nullptr, tags), 0);
    EXPECT_EQ(tags, std::vector<std::uint32_t>{9});
}

TEST(PropertiesUnloaded, GiveNothing) {
    std::string error;
    std::string list;
    EXPECT_EQ(EnumerateImageProperties("a.jpg", error, list), 0);
    EXPECT_EQ(list, "");
    EXPECT_EQ(error, "");
    EXPECT_EQ(GetImageDateTime("a.jpg"), "");
    EXPECT_EQ(DateStampImage("a.jpg", "now"), 0);
}

TEST_F(DateTime, IsTheTextOfTag306WhateverItsType) {
    fake_.GiveProperties({{306, 7, std::string("2026:11:21\0", 11)}});
    EXPECT_EQ(GetImageDateTime("a.jpg"), "2026:11:21");
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
    EXPECT_EQ(fake_.CountOf("GdipDisposeImage 11"), 1u);
}

TEST_F(DateTime, IsEmptyWhereThereIsNone) {
    EXPECT_EQ(GetImageDateTime("a.png"), "");
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(DateTime, BlankNameMakesNoCall) {
    EXPECT_EQ(GetImageDateTime(""), "");
    EXPECT_EQ(GetImageDateTime("  "), "");
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(DateTime, FileThatDoesNotLoadLeavesTheSessionOpen) {
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(GetImageDateTime("a.jpg"), "");
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(DateTime, RefusedSessionGivesNothing) {
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(GetImageDateTime("a.jpg"), "");
    EXPECT_EQ(fake_.Calls(), Calls{"GdiplusStartup"});
}

TEST(StampedName, IsCutAtTheFirstDotAndStaysInTheFolder) {
    EXPECT_EQ(StampedName("C:\\a\\b.c.png"), "C:\\a\\b_stamped.jpg");
    EXPECT_EQ(StampedName("b.c.png"), "b_stamped.jpg");
    EXPECT_EQ(StampedName("C:\\a\\b"), "C:\\a\\b_stamped.jpg");
    EXPECT_EQ(StampedName("C:\\a.b\\.hidden"), "C:\\a.b\\_stamped.jpg");
}

TEST_F(DateStamp, SetsTheDateOnACloneAndSavesItAsJpeg) {
    fake_.GiveProperties({{274, 3, Bytes<std::int16_t>({65})}});
    EXPECT_EQ(DateStampImage("C:\\a\\b.c.png", "today"), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipCloneImage 11", "GdipGetPropertySize 11",
                     "GdipGetAllPropertyItems 11", "GdipSetPropertyItem 44 274", "GdipSetPropertyItem 44 306",
                     "GdipGetImageEncodersSize", "GdipGetImageEncoders", "GdipSaveImageToFile 44",
                     "GdipDisposeImage 11", "GdipDisposeImage 44", "GdiplusShutdown 1"}));
    EXPECT_EQ(fake_.PropertiesSet().back(), "306 2 6 today");
    EXPECT_EQ(fake_.LastSavedName(), "C:\\a\\b_stamped.jpg");
    EXPECT_NE(fake_.LastParameters().find("encoder 557CF401"), std::string::npos);
}

TEST_F(DateStamp, EmptyDateHasLengthOne) {
    EXPECT_EQ(DateStampImage("a.jpg", ""), 0);
    EXPECT_EQ(fake_.PropertiesSet().back(), "306 2 1 ");
}

TEST_F(DateStamp, BlankNameMakesNoCall) {
    EXPECT_EQ(DateStampImage(" ", "today"), 0);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(DateStamp, RefusedSessionAndFailedLoadAreRefused) {
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(DateStampImage("a.jpg", "today"), -1);
    fake_.Answer("GdiplusStartup", 0);
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(DateStampImage("a.jpg", "today"), -1);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(DateStamp, StatusOfSettingIsPassedUpAndNothingSaved) {
    fake_.Answer("GdipSetPropertyItem", 20);
    EXPECT_EQ(DateStampImage("a.jpg", "today"), 20);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 44"), 0u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(DateStamp, FailingSaveIsNotSeen) {
    fake_.Answer("GdipSaveImageToFile", 1);
    EXPECT_EQ(DateStampImage("a.jpg", "today"), 0);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

} // namespace
