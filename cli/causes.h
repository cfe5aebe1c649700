// Turns what an operation answered into one sentence about a file and the cause.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumbrix::cli {

// Throws WrongUsage for a name that is empty or blank, which the operations would pass over in silence.
void RequireName(const std::string& file);

// Throws Failure unless an operation that reads `file` succeeded.
void ExpectRead(std::int32_t status, const std::string& file);

// Throws Failure unless an operation from `source` to `target` succeeded and the target is there.
void ExpectWritten(std::int32_t status, const std::string& source, const std::string& target);

// Throws the Failure for an operation that wrote nothing.
[[noreturn]] void ThrowNotWritten(std::int32_t status, const std::string& source, const std::string& target);

// Throws Failure where it is seen beforehand that nothing made from `source` can take the place of `target`.
void ExpectReplaceable(const std::string& source, const std::string& target);

struct PictureSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// The size of the picture in a file; throws Failure where it cannot be read.
PictureSize SizeOf(const std::string& file);

// A size as people write it: "20 x 40".
std::string TextOf(PictureSize size);

} // namespace lumbrix::cli
