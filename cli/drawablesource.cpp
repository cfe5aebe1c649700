// A way round what cannot be drawn on: pictures with a palette.
#include "cli/drawablesource.h"

#include "cli/causes.h"
#include "cli/system.h"
#include "imaging/exports/lumbrix.h"

namespace lumbrix::cli {

DrawableSource::DrawableSource(const std::string& source) : file_(source) {
    if (lumbrix_has_palette(source.c_str()) == 0) {
        return;
    }
    folder_.emplace();
    file_ = NameOf(folder_->PathOfNew("copy.png"));
    ExpectWritten(lumbrix_copy_true_color(source.c_str(), file_.c_str()), source, file_);
}

} // namespace lumbrix::cli
