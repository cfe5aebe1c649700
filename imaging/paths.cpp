// Small procedures on file names.
#include "imaging/paths.h"

#include "platform/files.h"

namespace lumbrix {

namespace {

std::string BehindLast(const std::string& text, char separator) {
    const std::size_t at = text.rfind(separator);
    return at == std::string::npos ? text : text.substr(at + 1);
}

} // namespace

std::string AddBackslash(const std::string& path) { return path.empty() || path.back() == '\\' ? path : path + '\\'; }

std::string FileNamePart(const std::string& path) { return BehindLast(BehindLast(path, '\\'), '/'); }

std::string BaseNamePart(const std::string& path) {
    const std::string name = FileNamePart(path);
    return name.substr(0, name.find('.'));
}

std::string ExtensionPart(const std::string& path) {
    const std::string name = FileNamePart(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string FolderPart(const std::string& path) {
    const std::size_t backslash = path.rfind('\\');
    return backslash == std::string::npos ? std::string() : path.substr(0, backslash + 1);
}

std::string ModulePath() { return ProgramPath(); }

std::int32_t ShortcutSize(const std::string& path) {
    const auto size = FileSize(path);
    return size ? static_cast<std::int32_t>(static_cast<std::uint32_t>(*size)) : -1;
}

std::string SystemFolderPath() { return AddBackslash(SystemFolder()); }

std::string WindowsFolderPath() { return AddBackslash(WindowsFolder()); }

} // namespace lumbrix
