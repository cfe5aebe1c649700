// Results as JSON.
#include "cli/json.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

std::string JsonText(const std::string& text) {
    JsonWriter json;
    json.Text(text);
    return json.Line();
}

TEST(Json, NestsAndSeparates) {
    JsonWriter json;
    json.BeginObject();
    json.Key("a");
    json.Number(-1);
    json.Key("b");
    json.BeginArray();
    json.Number(2);
    json.Text("c");
    json.BeginObject();
    json.EndObject();
    json.BeginArray();
    json.EndArray();
    json.EndArray();
    json.Key("d");
    json.Number(9007199254740993);
    json.EndObject();
    EXPECT_EQ(json.Line(), "{\"a\": -1, \"b\": [2, \"c\", {}, []], \"d\": 9007199254740993}\n");
}

TEST(Json, EscapesWhatEndsATextAndWhatATerminalObeys) {
    EXPECT_EQ(JsonText("a\"b\\c/d"), "\"a\\\"b\\\\c/d\"\n");
    EXPECT_EQ(JsonText("\x01\t\n\x1F \x7E\x7F"), "\"\\u0001\\u0009\\u000a\\u001f ~\\u007f\"\n");
}

TEST(ValidUtf8, KeepsWhatIsValid) {
    for (const char* text :
         {"a", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(ValidUtf8(text), text);
    }
    EXPECT_EQ(ValidUtf8(std::string(1, '\0')), std::string(1, '\0'));
}

TEST(ValidUtf8, ReplacesEachByteThatIsNot) {
    const std::string mark = "\xEF\xBF\xBD";
    EXPECT_EQ(ValidUtf8("a\x80z"), "a" + mark + "z");
    EXPECT_EQ(ValidUtf8("\xC3"), mark);
    EXPECT_EQ(ValidUtf8("\xC3z"), mark + "z");
    EXPECT_EQ(ValidUtf8("\xC1\xBF"), mark + mark);            // longer than needed
    EXPECT_EQ(ValidUtf8("\xE0\x9F\xBF"), mark + mark + mark); // likewise
    EXPECT_EQ(ValidUtf8("\xED\xA0\x80"), mark + mark + mark); // half of a pair
    EXPECT_EQ(ValidUtf8("\xF0\x8F\xBF\xBF"), mark + mark + mark + mark);
    EXPECT_EQ(ValidUtf8("\xF4\x90\x80\x80"), mark + mark + mark + mark); // beyond the last
    EXPECT_EQ(ValidUtf8("\xF5\x80\x80\x80"), mark + mark + mark + mark);
    EXPECT_EQ(ValidUtf8("\xE2\x82"), mark + mark);
    EXPECT_EQ(ValidUtf8("\xE2\x82z"), mark + mark + "z");
    EXPECT_EQ(ValidUtf8("\xFF"), mark);
}

#ifndef _WIN32 // the code page decides there
TEST(Json, HoldsAnyByte) {
    EXPECT_EQ(JsonText("\xE4"), "\"\xEF\xBF\xBD\"\n");
    EXPECT_EQ(JsonText("\xC3\xA4"), "\"\xC3\xA4\"\n");
    EXPECT_EQ(JsonText("\xC2\x9B\xC2\xA0"), "\"\\u009b\xC2\xA0\"\n");
}
#endif

} // namespace
