// Works on pictures through the flat functions of an imaging library that is named by its file:
// gdiplus_bench LIBRARY convert|height=N|thumb=N|rotate SOURCE TARGET
// gdiplus_bench LIBRARY name
//
// For every line on standard input the work is done once, and a line with the seconds that it took is printed. What
// fails is named in a line, with its status, and ends the process. `name` tells whose library it is: "ours" or "the
// system's".
#include "bench/library.h"
#include "imaginglibrary/flat/flattypes.h"

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace imaginglibrary;
using bench::Call;

constexpr std::int32_t PixelUnit = static_cast<std::int32_t>(Unit::Pixel);

struct Order {
    std::string_view verb;
    std::int32_t number = 0; // behind the verb's equals sign
    std::u16string source;
    std::u16string target;
    Guid encoder{};
};

// Calls a function; where it fails that is told and the process ends.
template <class... Arguments> void Expect(const char* name, Arguments... arguments) {
    if (const int status = Call(name, arguments...); status != 0) {
        std::printf("%s: status %d\n", name, status);
        std::exit(1);
    }
}

void Start() {
    const GdiplusStartupInput input{.gdiplusVersion = 1};
    std::uintptr_t token = 0;
    Expect("GdiplusStartup", &token, &input, static_cast<void*>(nullptr));
}

std::u16string_view MimeTypeOf(const std::filesystem::path& target) {
    const std::string extension = target.extension().string();
    return extension == ".jpg"   ? u"image/jpeg"
           : extension == ".tif" ? u"image/tiff"
           : extension == ".gif" ? u"image/gif"
           : extension == ".bmp" ? u"image/bmp"
                                 : u"image/png";
}

Guid EncoderFor(std::u16string_view mimeType) {
    std::uint32_t count = 0, bytes = 0;
    Expect("GdipGetImageEncodersSize", &count, &bytes);
    std::vector<ImageCodecInfo> records(bytes / sizeof(ImageCodecInfo) + 1);
    Expect("GdipGetImageEncoders", count, bytes, records.data());
    for (std::uint32_t i = 0; i < count; ++i) {
        if (mimeType == records[i].mimeType) {
            return records[i].clsid;
        }
    }
    std::puts("no encoder");
    std::exit(1);
}

Order OrderFrom(char** arguments) {
    const std::string_view work = arguments[2];
    const std::filesystem::path target = arguments[4];
    Order order{.verb = work.substr(0, work.find('=')),
                .source = std::filesystem::path(arguments[3]).u16string(),
                .target = target.u16string(),
                .encoder = EncoderFor(MimeTypeOf(target))};
    if (order.verb.size() < work.size()) {
        std::from_chars(work.data() + order.verb.size() + 1, work.data() + work.size(), order.number);
    }
    return order;
}

void Save(GpImage* image, const Order& order) {
    Expect("GdipSaveImageToFile", image, order.target.c_str(), &order.encoder, static_cast<const void*>(nullptr));
}

struct Sides {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

Sides SidesOf(GpImage* image) {
    Sides sides;
    Expect("GdipGetImageWidth", image, &sides.width);
    Expect("GdipGetImageHeight", image, &sides.height);
    return sides;
}

Sides AtHeight(Sides sides, std::int32_t height) {
    const auto wanted = static_cast<std::uint32_t>(height);
    return {(sides.width * wanted + sides.height / 2) / sides.height, wanted};
}

void SaveThumbnail(GpImage* image, const Order& order) {
    const Sides to = AtHeight(SidesOf(image), order.number);
    GpImage* thumbnail = nullptr;
    Expect("GdipGetImageThumbnail", image, to.width, to.height, &thumbnail, static_cast<void*>(nullptr),
           static_cast<void*>(nullptr));
    Save(thumbnail, order);
    Call("GdipDisposeImage", thumbnail);
}

// Draws the picture on a bitmap of the wanted size and its own format, in the mode that a surface begins with.
void SaveResized(GpImage* image, const Order& order) {
    const Sides from = SidesOf(image), to = AtHeight(from, order.number);
    std::int32_t format = 0;
    GpImage* bitmap = nullptr;
    GpGraphics* graphics = nullptr;
    Expect("GdipGetImagePixelFormat", image, &format);
    Expect("GdipCreateBitmapFromScan0", static_cast<std::int32_t>(to.width), static_cast<std::int32_t>(to.height),
           std::int32_t{0}, format, static_cast<void*>(nullptr), &bitmap);
    Expect("GdipGetImageGraphicsContext", bitmap, &graphics);
    Expect("GdipDrawImageRectRectI", graphics, image, std::int32_t{0}, std::int32_t{0},
           static_cast<std::int32_t>(to.width), static_cast<std::int32_t>(to.height), std::int32_t{0}, std::int32_t{0},
           static_cast<std::int32_t>(from.width), static_cast<std::int32_t>(from.height), PixelUnit,
           static_cast<void*>(nullptr), static_cast<void*>(nullptr), static_cast<void*>(nullptr));
    Call("GdipDeleteGraphics", graphics);
    Save(bitmap, order);
    Call("GdipDisposeImage", bitmap);
}

void Do(const Order& order) {
    GpImage* image = nullptr;
    Expect("GdipLoadImageFromFile", order.source.c_str(), &image);
    if (order.verb == "thumb") {
        SaveThumbnail(image, order);
    } else if (order.verb == "height") {
        SaveResized(image, order);
    } else {
        if (order.verb == "rotate") {
            Expect("GdipImageRotateFlip", image, std::int32_t{1});
        }
        Save(image, order);
    }
    Call("GdipDisposeImage", image);
}

// Works once for every line, until there are no more.
void Serve(const Order& order) {
    for (int character = std::getchar(); character != EOF; character = std::getchar()) {
        if (character == '\n') {
            const auto before = std::chrono::steady_clock::now();
            Do(order);
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
            std::printf("%.6f\n", taken.count());
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    const bool isNameAsked = count == 3 && std::string_view(arguments[2]) == "name";
    if (count != 5 && !isNameAsked) {
        std::fprintf(stderr, "usage: gdiplus_bench LIBRARY name | convert|height=N|thumb=N|rotate SOURCE TARGET\n");
        return 2;
    }
    if (!bench::OpenLibrary(arguments[1])) {
        std::puts("no library");
        return 1;
    }
    if (isNameAsked) {
        std::puts(bench::FindFunction("ImagingWatchImage") != nullptr ? "ours" : "the system's");
        return 0;
    }
    try {
        Start();
        Serve(OrderFrom(arguments));
    } catch (const std::exception& error) {
        std::puts(error.what());
        return 1;
    }
    return 0;
}
