// The fake module as the tests hold it.
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"
#include "tests/imaging/fakemodule.h"

#include <algorithm>
#include <sstream>

namespace tests {

namespace {

constexpr std::int32_t TrueColor = 0x26200A;

template <class Function> Function* As(void* address) { return reinterpret_cast<Function*>(address); }

std::vector<std::string> LinesOf(const char* text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

FakeImagingLibrary::FakeImagingLibrary() {
    lumbrix::SubstituteModule("gdiplus.dll", FAKE_MODULE);
    lumbrix::LoadImagingLibrary();
    As<void()>(Control("FakeReset"))();
    As<void()>(Control("FakeClearProperties"))();
    ReportFormat(TrueColor);
}

FakeImagingLibrary::~FakeImagingLibrary() {
    lumbrix::UnloadImagingLibrary();
    lumbrix::SubstituteModule("gdiplus.dll", "");
}

void* FakeImagingLibrary::Control(const char* name) const {
    return lumbrix::FindProcedure(lumbrix::ImagingLibraryHandle, name);
}

std::vector<std::string> FakeImagingLibrary::Calls() const {
    return LinesOf(As<const char*()>(Control("FakeCalls"))());
}

std::size_t FakeImagingLibrary::CountOf(const std::string& call) const {
    const auto calls = Calls();
    return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
}

void FakeImagingLibrary::Answer(const char* name, std::int32_t status) {
    As<void(const char*, std::int32_t)>(Control("FakeAnswer"))(name, status);
}

void FakeImagingLibrary::GiveHandles(std::uintptr_t image, std::uintptr_t thumbnail) {
    As<void(std::uintptr_t, std::uintptr_t)>(Control("FakeHandles"))(image, thumbnail);
}

void FakeImagingLibrary::ReportSize(std::uint32_t width, std::uint32_t height) {
    As<void(std::uint32_t, std::uint32_t)>(Control("FakeSize"))(width, height);
}

void FakeImagingLibrary::ReportFormat(std::int32_t format) { As<void(std::int32_t)>(Control("FakeFormat"))(format); }

void FakeImagingLibrary::ReportDamage() { As<void()>(Control("FakeDamage"))(); }

std::string FakeImagingLibrary::LastThumbnail() const { return As<const char*()>(Control("FakeLastThumbnail"))(); }

std::string FakeImagingLibrary::LastParameters() const { return As<const char*()>(Control("FakeLastParameters"))(); }

std::string FakeImagingLibrary::LastSavedName() const { return As<const char*()>(Control("FakeSavedName"))(); }

void FakeImagingLibrary::GiveProperties(const std::vector<Item>& items) {
    As<void()>(Control("FakeClearProperties"))();
    const auto add = As<void(std::uint32_t, std::uint16_t, const char*, std::uint32_t)>(Control("FakeAddProperty"));
    for (const Item& item : items) {
        add(item.tag, item.type, item.value.data(), static_cast<std::uint32_t>(item.value.size()));
    }
}

std::vector<std::string> FakeImagingLibrary::PropertiesSet() const {
    return LinesOf(As<const char*()>(Control("FakePropertiesSet"))());
}

} // namespace tests
