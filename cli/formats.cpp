// The formats that are written.
#include "cli/formats.h"

#include "base/lettercase.h"
#include "cli/options.h"
#include "cli/system.h"

namespace lumbrix::cli {

namespace {

constexpr const char* Formats[] = {"bmp", "jpg", "jpeg", "gif", "tif", "tiff", "png"};

const char* FindFormat(const std::string& word) {
    for (const char* format : Formats) {
        if (LowerCase(word) == format) {
            return format;
        }
    }
    return nullptr;
}

} // namespace

const char* FormatOfWord(const std::string& word) {
    if (const char* format = FindFormat(word)) {
        return format;
    }
    throw WrongUsage{"unknown format '" + word + "': use bmp, jpg, jpeg, gif, tif, tiff or png"};
}

void RequireFormat(const std::string& target) {
    const std::string extension = NameOf(PathOf(target).extension());
    if (extension.empty() || FindFormat(extension.substr(1)) == nullptr) {
        throw WrongUsage{"'" + target + "' must end in .bmp, .jpg, .jpeg, .gif, .tif, .tiff or .png"};
    }
}

} // namespace lumbrix::cli
