// The formats that are written.
#include "cli/formats.h"

#include "base/lettercase.h"
#include "cli/options.h"
#include "cli/system.h"

namespace lumbrix::cli {

namespace {

constexpr const char* Formats[] = {"bmp", "jpg", "jpeg", "gif", "tif", "tiff", "png"};

// Further extensions of formats that are written, as other programs use them.
struct RarerExtension {
    const char* word;
    const char* format;
};

constexpr RarerExtension RarerExtensions[] = {{"dib", "bmp"}, {"rle", "bmp"}, {"jpe", "jpg"}, {"jfif", "jpg"}};

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

const char* FormatOfName(const std::filesystem::path& file) {
    const std::string extension = LowerCase(NameOf(file.extension()));
    const std::string word = extension.empty() ? "" : extension.substr(1);
    for (const RarerExtension& rarer : RarerExtensions) {
        if (word == rarer.word) {
            return rarer.format;
        }
    }
    return FindFormat(word);
}

void RequireFormat(const std::string& target) {
    const std::string extension = NameOf(PathOf(target).extension());
    if (extension.empty() || FindFormat(extension.substr(1)) == nullptr) {
        throw WrongUsage{"'" + target + "' must end in .bmp, .jpg, .jpeg, .gif, .tif, .tiff or .png"};
    }
}

} // namespace lumbrix::cli
