// How the main window's texts follow from each other.
#include "mainwindow/rules.h"

#include "imaging/paths.h"
#include "platform/text.h"

namespace lumbrix {

std::string Retargeted(const std::string& source, const std::string& target) {
    return AddBackslash(FolderPart(target)) + BaseNamePart(source) + "." + ExtensionPart(target);
}

std::string TargetInFolder(const std::string& folder, const std::string& source, const std::string& outputWord) {
    return AddBackslash(folder) + BaseNamePart(source) + "." + outputWord;
}

std::string WithOutputType(const std::string& target, const std::string& outputWord) {
    const std::string extension = ExtensionPart(target);
    if (extension.empty()) {
        return target;
    }
    return ReplaceAll(target, "." + extension, "." + outputWord);
}

std::string SizeText(std::int32_t width, std::int32_t height) {
    if (width <= 0 || height <= 0) {
        return {};
    }
    return "(W" + std::to_string(width) + " x H" + std::to_string(height) + ")";
}

} // namespace lumbrix
