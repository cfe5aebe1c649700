// The exported procedure that deletes a key of the user's settings, found by its name in the finished library.
#include "imaging/exports/lumbrix.h"
#include "platform/registry.h"
#include "tests/support/ownsettings.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <dlfcn.h>
#endif

namespace {

using namespace tests;

constexpr std::uint32_t Root = 0x80000001;

class DeletedKey : public testing::Test {
  protected:
    using Delete = std::int32_t(LUMBRIX_CALL*)(const std::uint32_t*, const char*);

    DeletedKey() {
#ifdef _WIN32
        deleteKey_ =
            reinterpret_cast<Delete>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("lumbrix.dll"), "DELREGKEY")));
#else
        deleteKey_ = reinterpret_cast<Delete>(dlsym(dlopen(LUMBRIX_LIBRARY, RTLD_NOW), "DELREGKEY"));
#endif
        lumbrix::SetRegValue(Root, Key("\\a\\b"), "Name", "text");
    }

    std::string Key(const std::string& below) const { return own_.Key() + below; }
    std::int32_t Deleted(const std::string& path, std::uint32_t root = Root) const {
        return deleteKey_(&root, path.c_str());
    }
    std::string Name() const { return lumbrix::GetRegValue(Root, Key("\\a\\b"), "Name"); }

    Delete deleteKey_ = nullptr;
    OwnSettings own_;
};

TEST_F(DeletedKey, IsGoneWithItsValues) {
    EXPECT_EQ(Deleted(Key("\\a\\b")), 0);
    EXPECT_EQ(Name(), "");
    EXPECT_EQ(Deleted(Key("\\a")), 0); // nothing is below it any more
}

TEST_F(DeletedKey, HasNoneBelowIt) {
    EXPECT_EQ(Deleted(Key("\\a")), 5);
    EXPECT_EQ(Name(), "text");
}

TEST_F(DeletedKey, MayBeMissing) {
    EXPECT_EQ(Deleted(Key("\\none")), 0);
    EXPECT_EQ(Deleted(Key("\\a\\b"), 0x80000003), 0);
    EXPECT_EQ(Name(), "text");
}

#ifndef _WIN32 // where it would put the user's own registry at stake
TEST_F(DeletedKey, NullPathIsAnEmptyOne) {
    EXPECT_EQ(deleteKey_(&Root, nullptr), 5);
    EXPECT_EQ(Name(), "text");
}
#endif

} // namespace
