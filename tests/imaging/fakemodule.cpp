// The fake module itself: the flat names for files and their images, and names of its own that steer it.
#include "imaging/gdiplus/flattypes.h"
#include "tests/imaging/fakerecord.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

namespace {

using namespace lumbrix;

std::string calls;
std::string lastThumbnail;
std::string lastParameters;
std::map<std::string, std::int32_t> answers;
std::map<std::string, int> counts;
std::string savedName;
std::uintptr_t imageHandle = 11;
std::uintptr_t thumbnailHandle = 22;
std::uint32_t reportedWidth = 30;
std::uint32_t reportedHeight = 20;
std::uintptr_t lastToken = 100;
std::int32_t isDamaged = 0;

// Of the image that was watched last.
std::int32_t(LUMBRIX_FLAT_CALL* watcher)(void*, std::uint32_t, std::uint32_t) = nullptr;
void* watcherContext = nullptr;

// Reports half of the rows and then all of them, those of the reported height. False where the watcher wants no more.
bool ReadRows() {
    return watcher == nullptr || (watcher(watcherContext, reportedHeight / 2, reportedHeight) != 0 &&
                                  watcher(watcherContext, reportedHeight, reportedHeight) != 0);
}

constexpr Clsid BmpEncoder{0x557cf400, 0x1a04, 0x11d3, {0x9a, 0x73, 0, 0, 0xf8, 0x1e, 0xf3, 0x2e}};
constexpr Clsid JpegEncoder{0x557cf401, 0x1a04, 0x11d3, {0x9a, 0x73, 0, 0, 0xf8, 0x1e, 0xf3, 0x2e}};

} // namespace

std::int32_t Record(const char* name, const std::string& arguments) {
    calls += name + (arguments.empty() ? arguments : " " + arguments) + "\n";
    const auto numbered = answers.find(name + ("#" + std::to_string(++counts[name])));
    return numbered != answers.end() ? numbered->second : answers[name];
}

std::string Number(const void* handle) { return std::to_string(reinterpret_cast<std::uintptr_t>(handle)); }

FAKE void FakeReset() {
    calls.clear();
    answers.clear();
    counts.clear();
    imageHandle = 11;
    thumbnailHandle = 22;
    reportedWidth = 30;
    reportedHeight = 20;
    isDamaged = 0;
    watcher = nullptr;
}
FAKE void FakeDamage() { isDamaged = 1; }
FAKE const char* FakeCalls() { return calls.c_str(); }
FAKE const char* FakeLastThumbnail() { return lastThumbnail.c_str(); }
FAKE const char* FakeLastParameters() { return lastParameters.c_str(); }
FAKE const char* FakeSavedName() { return savedName.c_str(); }
FAKE void FakeAnswer(const char* name, std::int32_t status) { answers[name] = status; }
FAKE void FakeHandles(std::uintptr_t image, std::uintptr_t thumbnail) {
    imageHandle = image;
    thumbnailHandle = thumbnail;
}
FAKE void FakeSize(std::uint32_t width, std::uint32_t height) {
    reportedWidth = width;
    reportedHeight = height;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdiplusStartup(SessionToken* token, const GdiplusStartupInput* input,
                                                   void* output) {
    const bool isUsual = input->gdiplusVersion == 1 && input->debugEventCallback == nullptr &&
                         input->suppressBackgroundThread == 0 && input->suppressExternalCodecs == 0 &&
                         output == nullptr;
    const std::int32_t status = Record("GdiplusStartup", isUsual ? "" : "with an unusual record");
    if (status == 0) {
        *token = ++lastToken;
    }
    return status;
}

FAKE void LUMBRIX_FLAT_CALL GdiplusShutdown(SessionToken token) {
    Record("GdiplusShutdown",
           std::to_string(static_cast<std::int32_t>(token) < 0 ? static_cast<std::int32_t>(token) : 1));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipLoadImageFromFile(const char16_t*, ImageHandle* image) {
    const std::int32_t status = Record("GdipLoadImageFromFile");
    if (status == 0) {
        const auto later = static_cast<std::uintptr_t>(counts["GdipLoadImageFromFile"] - 1);
        *image = reinterpret_cast<ImageHandle>(imageHandle == 0 ? 0 : imageHandle + later);
    }
    return status;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipDisposeImage(ImageHandle image) {
    return Record("GdipDisposeImage", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageWidth(ImageHandle image, std::uint32_t* width) {
    *width = reportedWidth;
    return Record("GdipGetImageWidth", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageHeight(ImageHandle image, std::uint32_t* height) {
    *height = reportedHeight;
    return Record("GdipGetImageHeight", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageThumbnail(ImageHandle image, std::uint32_t width, std::uint32_t height,
                                                          ImageHandle* thumbnail, void* callback, void* data) {
    const bool isUsual = callback == nullptr && data == nullptr;
    lastThumbnail = std::to_string(static_cast<std::int32_t>(width)) + " by " +
                    std::to_string(static_cast<std::int32_t>(height)) + (isUsual ? "" : " with a callback");
    const std::int32_t status = Record("GdipGetImageThumbnail", Number(image));
    if (status == 0) {
        *thumbnail = reinterpret_cast<ImageHandle>(thumbnailHandle);
    }
    return status;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    *count = 2;
    *bytes = 2 * sizeof(ImageCodecInfo) + 40;
    return Record("GdipGetImageEncodersSize");
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipGetImageEncoders(std::uint32_t, std::uint32_t, void* buffer) {
    ImageCodecInfo list[2]{};
    list[0].clsid = BmpEncoder;
    list[0].mimeType = u"image/bmp";
    list[1].clsid = JpegEncoder;
    list[1].mimeType = u"image/jpeg";
    std::memcpy(buffer, list, sizeof list);
    return Record("GdipGetImageEncoders");
}

FAKE std::int32_t LUMBRIX_FLAT_CALL GdipSaveImageToFile(ImageHandle image, const char16_t* name, const Clsid* encoder,
                                                        const EncoderParameters* parameters) {
    const EncoderParameter& parameter = parameters->parameter[0];
    char text[120];
    std::snprintf(text, sizeof text, "count %u, guid %08X, values %u, type %u, value %d, encoder %08X",
                  parameters->count, parameter.guid.data1, parameter.numberOfValues, parameter.type,
                  *static_cast<const std::int32_t*>(parameter.value), encoder->data1);
    lastParameters = text;
    savedName.clear();
    for (; *name != 0; ++name) {
        savedName += static_cast<char>(*name);
    }
    const std::int32_t status = Record("GdipSaveImageToFile", Number(image));
    constexpr std::int32_t Aborted = 9;
    return status == 0 && !ReadRows() ? Aborted : status;
}

FAKE std::int32_t LUMBRIX_FLAT_CALL ImagingGetImageDamage(ImageHandle image, std::int32_t* answer) {
    *answer = isDamaged;
    return Record("ImagingGetImageDamage", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL ImagingRefuseImageDamage(ImageHandle image) {
    return Record("ImagingRefuseImageDamage", Number(image));
}

FAKE std::int32_t LUMBRIX_FLAT_CALL ImagingWatchImage(ImageHandle image,
                                                      std::int32_t(LUMBRIX_FLAT_CALL* newWatcher)(void*, std::uint32_t,
                                                                                                  std::uint32_t),
                                                      void* context) {
    watcher = newWatcher;
    watcherContext = context;
    return Record("ImagingWatchImage", Number(image));
}
