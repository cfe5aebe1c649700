// The file of a link on Linux.
#include "platform/linkfile.h"

#include "platform/escaping.h"

#include <charconv>
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

std::string Written(const std::string& text) { return Escaped(text); }
template <class Number> std::string Written(Number number) { return std::to_string(number); }

// Reads a number that takes the whole text. False where it is none, or one that does not fit.
template <class Number> bool Read(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

bool Read(std::string_view line, std::string& text) {
    const std::optional<std::string> unescaped = Unescaped(line);
    text = unescaped.value_or("");
    return unescaped.has_value();
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
