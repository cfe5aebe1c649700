// Turns what an operation answered into one sentence about a file and the cause.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix::cli {

// Throws WrongUsage for a name that is empty or blank, which the operations would pass over in silence.
void RequireName(const std::string& file);

// Throws Failure unless an operation that reads `file` succeeded.
void ExpectRead(std::int32_t status, const std::string& file);

// Throws Failure unless an operation from `source` to `target` succeeded and the target is there.
void ExpectWritten(std::int32_t status, const std::string& source, const std::string& target);

} // namespace lumbrix::cli
