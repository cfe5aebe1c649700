// A way round what cannot be drawn on: pictures with a palette.
#pragma once

#include "cli/temporary.h"

#include <optional>
#include <string>

namespace lumbrix::cli {

// The file itself, or where its picture has a palette a true-colour copy that lives as long as this object. Throws
// Failure where the copy cannot be made.
class DrawableSource {
  public:
    explicit DrawableSource(const std::string& source);

    const std::string& File() const { return file_; }

  private:
    std::optional<TemporaryFolder> folder_;
    std::string file_;
};

} // namespace lumbrix::cli
