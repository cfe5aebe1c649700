// Pictures that are read by operations which do not tell what they cannot do: damaged ones, and ones with a palette.
#include "cli/sources.h"

#include "cli/causes.h"
#include "cli/system.h"
#include "imaging/exports/lumbrix.h"

namespace lumbrix::cli {

namespace {

constexpr std::int32_t CannotDecode = 3;

// The least height at which a copy still has a width.
std::int32_t LeastHeight(PictureSize size) { return (size.height - 1) / size.width + 1; }

} // namespace

// The smallest copy takes every pixel of the picture and next to no room.
void ExpectIntact(const std::string& file) {
    const std::int32_t height = LeastHeight(SizeOf(file));
    TemporaryFolder folder;
    const std::string copy = NameOf(folder.PathOfNew("copy.bmp"));
    const std::int32_t status = ConvertImageToThumbBmp(file.c_str(), height, copy.c_str());
    if (status == CannotDecode) {
        ExpectRead(status, file);
    }
}

DrawableSource::DrawableSource(const std::string& source) : file_(source) {
    if (lumbrix_has_palette(source.c_str()) == 0) {
        return;
    }
    folder_.emplace();
    file_ = NameOf(folder_->PathOfNew("copy.png"));
    ExpectWritten(lumbrix_copy_true_color(source.c_str(), file_.c_str()), source, file_);
}

} // namespace lumbrix::cli
