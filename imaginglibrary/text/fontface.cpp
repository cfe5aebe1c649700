// Faces that fonts share.
#include "imaginglibrary/text/fontface.h"

#include <map>
#include <mutex>
#include <tuple>

namespace imaginglibrary {

Result<std::shared_ptr<const FontFace>> OpenFontFace(const std::u16string& family, bool isBold, bool isItalic) {
    using Key = std::tuple<std::u16string, bool, bool>;
    static std::mutex mutex;
    static std::map<Key, std::weak_ptr<const FontFace>> known; // the open ones, and names of others
    const std::lock_guard lock(mutex);
    const Key key(family, isBold, isItalic);
    if (const auto found = known.find(key); found != known.end()) {
        if (auto face = found->second.lock()) {
            return face;
        }
    }
    auto face = OpenUnsharedFontFace(family, isBold, isItalic);
    if (face.Ok()) {
        known[key] = *face;
    }
    return face;
}

} // namespace imaginglibrary
