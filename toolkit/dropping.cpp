// Files dropped on a window.
#include "toolkit/dropping.h"

#include "toolkit/droppingrules.h"
#include "toolkit/handles.h"

namespace lumbrix {

std::vector<std::string> TakeDroppedFiles(HDROP dropped) {
    constexpr std::size_t LongestPath = 254;
    constexpr UINT AskForCount = 0xFFFFFFFF;
    const Owned<HDROP, DragFinish> files(dropped);
    const UINT count = DragQueryFileA(files.Get(), AskForCount, nullptr, 0);
    std::vector<std::string> paths;
    for (UINT i = 0; i < count; ++i) {
        char path[LongestPath + 1] = "";
        DragQueryFileA(files.Get(), i, path, sizeof path);
        if (!IsPlainFolder(GetFileAttributesA(path))) {
            paths.emplace_back(path);
        }
    }
    return paths;
}

} // namespace lumbrix
