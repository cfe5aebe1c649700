// Pictures that are read by operations which do not tell what they cannot do: damaged ones, and ones with a palette.
#pragma once

#include "cli/temporary.h"

#include <optional>
#include <string>

namespace lumbrix::cli {

// Throws Failure for a picture that is damaged behind its header. Takes as long as decoding it.
void ExpectIntact(const std::string& file);

// For drawing on: the file itself, or where its picture has a palette a true-colour copy that lives as long as this
// object. Throws Failure where the copy cannot be made.
class DrawableSource {
  public:
    explicit DrawableSource(const std::string& source);

    const std::string& File() const { return file_; }

  private:
    std::optional<TemporaryFolder> folder_;
    std::string file_;
};

} // namespace lumbrix::cli
