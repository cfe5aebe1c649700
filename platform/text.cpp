// What is done to 8-bit text alike everywhere.
#include "platform/text.h"

namespace lumbrix {

std::string ReplaceAll(std::string text, std::string_view before, std::string_view after) {
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at + after.size())) {
        text.replace(at, before.size(), after);
    }
    return text;
}

} // namespace lumbrix
