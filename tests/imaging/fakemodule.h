// An imaging library that does nothing but keep a record, for tests of what the engine calls and in which order.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

// The fake module loaded in place of the imaging library, from construction to destruction.
class FakeImagingLibrary {
  public:
    FakeImagingLibrary();
    ~FakeImagingLibrary();

    // The functions called so far, such as "GdipDisposeImage 5": the name and its first argument where it is a handle
    // or a token.
    std::vector<std::string> Calls() const;
    std::size_t CountOf(const std::string& call) const;

    // What a function answers from now on; "NAME#2" is its second call alone.
    void Answer(const char* name, std::int32_t status);

    // The handles that loads and thumbnails give out; zero for none at all. A second load gives out the next number.
    void GiveHandles(std::uintptr_t image, std::uintptr_t thumbnail);

    // The size that the image reports.
    void ReportSize(std::uint32_t width, std::uint32_t height);

    // The pixel format that the image reports: that of 32 bits with alpha unless it is set.
    void ReportFormat(std::int32_t format);

    // From now on every image is damaged.
    void ReportDamage();

    // The arguments of the last thumbnail, and the parameter block of the last save as text.
    std::string LastThumbnail() const;
    std::string LastParameters() const;

    // Under which name the last save went.
    std::string LastSavedName() const;

    // What images have for properties: the layout of the flat interface, with the values given.
    struct Item {
        std::uint32_t tag;
        std::uint16_t type;
        std::string value;
    };
    void GiveProperties(const std::vector<Item>& items);

    // What was set, as "TAG TYPE LENGTH VALUE".
    std::vector<std::string> PropertiesSet() const;

  private:
    void* Control(const char* name) const;
};

// A test over the fake library.
class WithFake : public testing::Test {
  protected:
    FakeImagingLibrary fake_;
};

} // namespace tests
