// Texts: how a terminal may see them.
#include "cli/text.h"

#include "cli/system.h"

namespace lumbrix::cli {

namespace {

bool IsControl(unsigned char character) { return (character < ' ' && character != '\t') || character == 0x7F; }

// Whether U+0080 to U+009F begins here, which are control characters as well.
bool IsLongControl(const std::string& text, std::size_t at) {
    if (!AreTextsUtf8() || at + 1 >= text.size()) {
        return false;
    }
    const auto second = static_cast<unsigned char>(text[at + 1]);
    return static_cast<unsigned char>(text[at]) == 0xC2 && second >= 0x80 && second <= 0x9F;
}

} // namespace

std::string Printable(const std::string& text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsLongControl(text, i)) {
            printable.push_back('?');
            ++i;
        } else {
            printable.push_back(IsControl(static_cast<unsigned char>(text[i])) ? '?' : text[i]);
        }
    }
    return printable;
}

std::string MessageLine(const std::string& text) { return "lumbrix-cli: " + Printable(text) + "\n"; }

} // namespace lumbrix::cli
