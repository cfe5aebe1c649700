// The exported doors of the established procedures: each fixes a format, turns C texts into ours, and lets no exception
// out.
#include "imaging/annotate.h"
#include "imaging/canvas.h"
#include "imaging/convert.h"
#include "imaging/crop.h"
#include "imaging/datestamp.h"
#include "imaging/deployment.h"
#include "imaging/dimensions.h"
#include "imaging/display.h"
#include "imaging/exports/internal.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/exports/texts.h"
#include "imaging/formats.h"
#include "imaging/properties.h"
#include "imaging/resize.h"
#include "imaging/rotate.h"
#include "imaging/session.h"
#include "imaging/thumbnail.h"
#include "platform/registry.h"
#include "platform/shelllink.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace lumbrix::exports;

int32_t Convert(const char* source, const char* destination, const char* mimeWord) {
    return Door([&] { return lumbrix::ConvertImageFile(Text(source), Text(destination), mimeWord); });
}

int32_t ConvertToThumb(const char* source, int32_t height, const char* destination, const char* mimeWord) {
    return Door([&] { return lumbrix::ConvertImageFileToThumb(Text(source), height, Text(destination), mimeWord); });
}

// What a caller may leave out: a text or a number by reference. A null pointer counts as empty.
std::string TextAt(char* const* place) { return place == nullptr ? std::string() : Text(*place); }
template <class Number> Number NumberAt(const Number* place) { return place == nullptr ? Number() : *place; }

void PutText(char** place, const std::string& text) {
    if (place != nullptr) {
        ReplaceText(place, text);
    }
}

template <class Number> void PutNumber(Number* place, Number number) {
    if (place != nullptr) {
        *place = number;
    }
}

} // namespace

void LUMBRIX_CALL LoadImagingLibrary() {
    Door([] {
        lumbrix::LoadImagingLibrary();
        return 0;
    });
}

void LUMBRIX_CALL UnloadImagingLibrary() {
    Door([] {
        lumbrix::UnloadImagingLibrary();
        return 0;
    });
}

int32_t LUMBRIX_CALL DeployImagingLibrary() {
    return Door([] { return lumbrix::DeployImagingLibrary(); });
}

void LUMBRIX_CALL lumbrix_free(void* memory) { std::free(memory); }

const char* LUMBRIX_CALL lumbrix_version() { return LUMBRIX_VERSION_TEXT; }

uint32_t LUMBRIX_CALL lumbrix_version_number() { return LUMBRIX_VERSION; }

int32_t LUMBRIX_CALL ConvertImageToBmp(const char* source, const char* destination) {
    return Convert(source, destination, "image/bmp");
}

int32_t LUMBRIX_CALL ConvertImageToGif(const char* source, const char* destination) {
    return Convert(source, destination, "image/gif");
}

int32_t LUMBRIX_CALL ConvertImageToJpeg(const char* source, const char* destination) {
    return Convert(source, destination, "image/jpeg");
}

int32_t LUMBRIX_CALL ConvertImageToPng(const char* source, const char* destination) {
    return Convert(source, destination, "image/png");
}

int32_t LUMBRIX_CALL ConvertImageToSgl(const char* source, const char* destination) {
    return Convert(source, destination, "image/sgl");
}

int32_t LUMBRIX_CALL ConvertImageToTiff(const char* source, const char* destination) {
    return Convert(source, destination, "image/tiff");
}

int32_t LUMBRIX_CALL ConvertImageToThumbBmp(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/bmp");
}

int32_t LUMBRIX_CALL ConvertImageToThumbGif(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/gif");
}

int32_t LUMBRIX_CALL ConvertImageToThumbJpeg(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/jpeg");
}

int32_t LUMBRIX_CALL ConvertImageToThumbPng(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/png");
}

int32_t LUMBRIX_CALL ConvertImageToThumbTiff(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/tiff");
}

int32_t LUMBRIX_CALL GetImageDimensions(const char* file, int32_t* width, int32_t* height) {
    if (width == nullptr || height == nullptr) {
        return LUMBRIX_INVALID_PARAMETER;
    }
    return Door([&] { return lumbrix::GetImageFileDimensions(Text(file), width, height); });
}

int32_t LUMBRIX_CALL ResizeImage(const char* source, const char* destination, int32_t height) {
    return Door([&] { return lumbrix::ResizeImage(Text(source), Text(destination), height); });
}

int32_t LUMBRIX_CALL CropImage(const char* source, const char* destination, int32_t x, int32_t y, int32_t width,
                               int32_t height) {
    return Door([&] { return lumbrix::CropImage(Text(source), Text(destination), x, y, width, height); });
}

int32_t LUMBRIX_CALL RotateImage(const char* source, const char* destination, int32_t angle, const char* flip) {
    return Door([&] { return lumbrix::RotateImage(Text(source), Text(destination), angle, Text(flip)); });
}

int32_t LUMBRIX_CALL DisplayImage(const char* file, void* context, float x, float y) {
    return Door([&] { return lumbrix::DisplayImage(Text(file), context, x, y); });
}

int32_t LUMBRIX_CALL DrawImageFile(const char* file, void* context) {
    return Door([&] { return lumbrix::DrawImageFile(Text(file), context); });
}

int32_t LUMBRIX_CALL ConvertImageFile(const char* source, const char* destination) {
    return Door([&] {
        const std::string target = Text(destination);
        return lumbrix::ConvertImageFile(Text(source), target, lumbrix::MimeTypeForName(target));
    });
}

int32_t LUMBRIX_CALL StartCanvasSession(uintptr_t* token) {
    return Door([&] { return token == nullptr ? LUMBRIX_INVALID_PARAMETER : lumbrix::StartLastingSession(token); });
}

void LUMBRIX_CALL EndCanvasSession(uintptr_t token) {
    Door([&] {
        lumbrix::EndLastingSession(token);
        return 0;
    });
}

void LUMBRIX_CALL LoadCanvasImage(const char* file, void** image, int32_t* width, int32_t* height) {
    Door([&] {
        if (image != nullptr) {
            const lumbrix::PixelSize size = lumbrix::LoadCanvasImage(Text(file), image);
            PutNumber(width, size.width);
            PutNumber(height, size.height);
        }
        return 0;
    });
}

void LUMBRIX_CALL DrawCanvasImage(void* image, const int32_t* points, void* context) {
    if (points == nullptr) {
        return;
    }
    Door([&] {
        lumbrix::DrawCanvasImage(image, {{{points[0], points[1]}, {points[2], points[3]}, {points[4], points[5]}}},
                                 context);
        return 0;
    });
}

int32_t LUMBRIX_CALL AnnotateImage(const char* source, const char* destination, float x, float y, const char* text,
                                   const char* font, int32_t size, int32_t bold, int32_t italic, int32_t underline,
                                   int32_t strikeout, int32_t alpha, int32_t blue, int32_t green, int32_t red) {
    return Door([&] {
        return lumbrix::AnnotateImage(
            Text(source), Text(destination),
            {x, y, Text(text), Text(font), size, bold, italic, underline, strikeout, alpha, blue, green, red});
    });
}

int32_t LUMBRIX_CALL StampImage(const char* source, const char* destination, float x, float y, const char* stamp) {
    return Door([&] { return lumbrix::StampImage(Text(source), Text(destination), x, y, Text(stamp)); });
}

int32_t LUMBRIX_CALL CopyImageProperties(void* source, void** destination) {
    if (destination == nullptr) {
        return LUMBRIX_INVALID_PARAMETER;
    }
    return Door([&] { return lumbrix::CopyImageProperties(source, *destination); });
}

int32_t LUMBRIX_CALL GetPropertyIdList(void* image, lumbrix_tag_list* list) {
    if (list == nullptr) {
        return LUMBRIX_INVALID_PARAMETER;
    }
    return Door([&] {
        if (image == nullptr) {
            return 0;
        }
        std::vector<std::uint32_t> tags;
        lumbrix::GetPropertyIdList(image, tags);
        auto* copy = tags.empty() ? nullptr : static_cast<uint32_t*>(Allocate(tags.size() * sizeof(uint32_t)));
        std::copy(tags.begin(), tags.end(), copy);
        std::free(list->tags);
        *list = {copy, static_cast<int32_t>(tags.size())};
        return 0;
    });
}

int32_t LUMBRIX_CALL EnumerateImageProperties(const char* file, char** error, char** list) {
    if (error == nullptr || list == nullptr) {
        return LUMBRIX_INVALID_PARAMETER;
    }
    return Door([&] {
        std::string errorText = Text(*error);
        std::string listText = Text(*list);
        lumbrix::EnumerateImageProperties(Text(file), errorText, listText);
        std::erase(listText, '\0'); // of values of bytes; a C text would end there
        ReplaceText(error, errorText);
        ReplaceText(list, listText);
        return 0;
    });
}

char* LUMBRIX_CALL GetImageDateTime(const char* file) {
    char* text = nullptr;
    Door([&] {
        text = NewText(lumbrix::GetImageDateTime(Text(file)));
        return 0;
    });
    return text;
}

int32_t LUMBRIX_CALL DateStampImage(const char* file, const char* date) {
    return Door([&] { return lumbrix::DateStampImage(Text(file), Text(date)); });
}

int32_t LUMBRIX_CALL DELREGKEY(const uint32_t* root, const char* path) {
    constexpr int32_t WrongArgument = 87; // of the registry
    return Door([&] { return root == nullptr ? WrongArgument : lumbrix::DeleteRegKey(*root, Text(path)); });
}

void LUMBRIX_CALL CreateLink(int32_t folder, const char* name, const char* target, const char* arguments,
                             const char* working_folder, int32_t show_command, const char* description,
                             const char* /*unused*/, const char* icon_file, const int32_t* icon_index) {
    Door([&] {
        lumbrix::CreateLink(folder, Text(name),
                            {.target = Text(target),
                             .workingFolder = Text(working_folder),
                             .arguments = Text(arguments),
                             .description = Text(description),
                             .iconFile = Text(icon_file),
                             .iconIndex = NumberAt(icon_index),
                             .showCommand = show_command});
        return 0;
    });
}

int32_t LUMBRIX_CALL GetShellLinkInfo(const char* path, char** target, char** working_folder, char** arguments,
                                      char** description, char** icon_file, int32_t* show_command, int32_t* icon_index,
                                      void* /*unused*/, uint16_t* hot_key) {
    const int32_t result = Door([&] {
        lumbrix::LinkFields fields = {TextAt(target),         TextAt(working_folder), TextAt(arguments),
                                      TextAt(description),    TextAt(icon_file),      NumberAt(icon_index),
                                      NumberAt(show_command), NumberAt(hot_key)};
        const int32_t isRead = lumbrix::GetShellLinkInfo(Text(path), fields);
        PutText(target, fields.target);
        PutText(working_folder, fields.workingFolder);
        PutText(arguments, fields.arguments);
        PutText(description, fields.description);
        PutText(icon_file, fields.iconFile);
        PutNumber(show_command, fields.showCommand);
        PutNumber(icon_index, fields.iconIndex);
        PutNumber(hot_key, fields.hotKey);
        return isRead;
    });
    return result == 1 ? 1 : 0;
}

char* LUMBRIX_CALL GetDestinationFolder(const int32_t* folder) {
    char* path = nullptr;
    Door([&] {
        path = NewText(folder == nullptr ? std::string() : lumbrix::GetDestinationFolder(*folder));
        return 0;
    });
    return path;
}

void LUMBRIX_CALL RemoveShortcut(const char* name, int32_t folder) {
    Door([&] {
        lumbrix::RemoveShortcut(Text(name), folder);
        return 0;
    });
}
