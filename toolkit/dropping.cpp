// Files dropped on a window.
#include "toolkit/dropping.h"

#include "toolkit/droppingrules.h"

namespace lumbrix {

std::vector<std::string> TakeDroppedFiles(HDROP files) {
    constexpr std::size_t LongestPath = 254;
    constexpr UINT AskForCount = 0xFFFFFFFF;
    const UINT count = DragQueryFileA(files, AskForCount, nullptr, 0);
    std::vector<std::string> paths;
    for (UINT i = 0; i < count; ++i) {
        char path[LongestPath + 1] = "";
        DragQueryFileA(files, i, path, sizeof path);
        if (!IsPlainFolder(GetFileAttributesA(path))) {
            paths.emplace_back(path);
        }
    }
    DragFinish(files);
    return paths;
}

} // namespace lumbrix
