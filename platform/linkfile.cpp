// The file of a link on Linux.
#include "platform/linkfile.h"

#include <charconv>
#include <cstdio>
#include <string_view>
#include <type_traits>

namespace lumbrix {

namespace {

constexpr std::string_view FirstLine = "[Link]";

// Has `take` meet the name and the value of every field, in the order of the file. What it gives back is whether it
// goes on.
template <class Fields, class Take> bool EachField(Fields& fields, Take take) {
    return take("Target", fields.target) && take("WorkingFolder", fields.workingFolder) &&
           take("Arguments", fields.arguments) && take("Description", fields.description) &&
           take("IconFile", fields.iconFile) && take("IconIndex", fields.iconIndex) &&
           take("ShowCommand", fields.showCommand) && take("HotKey", fields.hotKey);
}

bool IsEscaped(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F || byte == '%'; }

std::string Written(const std::string& text) {
    std::string line;
    for (const char byte : text) {
        if (IsEscaped(byte)) {
            char digits[4];
            std::snprintf(digits, sizeof digits, "%%%02X", static_cast<unsigned char>(byte));
            line += digits;
        } else {
            line += byte;
        }
    }
    return line;
}

template <class Number> std::string Written(Number number) { return std::to_string(number); }

// Reads a number that takes the whole text. False where it is none, or one that does not fit.
template <class Number> bool Read(std::string_view text, Number& number, int base = 10) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, base);
    return result.ec == std::errc() && result.ptr == end;
}

// Reads a text, which is empty at first. False where a percent sign has no two digits behind it.
bool Read(std::string_view line, std::string& text) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        unsigned char byte = static_cast<unsigned char>(line[i]);
        if (byte == '%') {
            const std::string_view digits = line.substr(i + 1, 2);
            if (digits.size() != 2 || !Read(digits, byte, 16)) {
                return false;
            }
            i += 2;
        }
        text += static_cast<char>(byte);
    }
    return true;
}

// Takes the next line, without its end, which must be there.
std::optional<std::string_view> TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return line;
}

} // namespace

std::string LinkFileText(const LinkFields& fields) {
    std::string text = std::string(FirstLine) + '\n';
    EachField(fields, [&](const char* name, const auto& value) {
        text += std::string(name) + '=' + Written(value) + '\n';
        return true;
    });
    return text;
}

std::optional<LinkFields> LinkFromFileText(const std::string& text) {
    std::string_view rest = text;
    LinkFields fields;
    const bool isLink = TakeLine(rest) == FirstLine && EachField(fields, [&](std::string_view name, auto& value) {
                            const std::optional<std::string_view> line = TakeLine(rest);
                            return line && line->starts_with(name) && line->substr(name.size()).starts_with('=') &&
                                   Read(line->substr(name.size() + 1), value);
                        });
    return isLink && rest.empty() ? std::optional(fields) : std::nullopt;
}

} // namespace lumbrix
