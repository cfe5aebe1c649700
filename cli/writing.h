// Files that are written whole or not at all, by operations that do not tell whether they wrote.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace lumbrix::cli {

// Lets `write` make the file under a name that is new, in the target's folder and with its extension, and puts it in
// the target's place if it came to be there. `write` gives back the operation's status. Throws Failure otherwise, and
// then the target is as it was and nothing is left behind.
void WriteInOneStep(const std::string& source, const std::string& target,
                    const std::function<std::int32_t(const std::string& temporary)>& write);

} // namespace lumbrix::cli
