// Results as JSON, for other programs to read.
#include "cli/json.h"

#include "cli/system.h"

#include <cstdio>

namespace lumbrix::cli {

namespace {

constexpr const char* Replacement = "\xEF\xBF\xBD";

unsigned ByteAt(const std::string& text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// The bounds of the second byte say what the first alone does not: no longer form than needed, no half of a pair, and
// nothing beyond U+10FFFF.
struct Lead {
    unsigned first;
    unsigned last;
    std::size_t length;
    unsigned leastSecond;
    unsigned mostSecond;
};

constexpr Lead Leads[] = {
    {0x00, 0x7F, 1, 0, 0},       {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool IsWhole(const std::string& text, std::size_t at, const Lead& lead) {
    if (lead.length > 1 && (ByteAt(text, at + 1) < lead.leastSecond || ByteAt(text, at + 1) > lead.mostSecond)) {
        return false;
    }
    for (std::size_t i = 2; i < lead.length; ++i) {
        if ((ByteAt(text, at + i) & 0xC0) != 0x80) {
            return false;
        }
    }
    return true;
}

// How many bytes the character has that begins here; 0 where none does.
std::size_t CharacterLength(const std::string& text, std::size_t at) {
    const unsigned first = ByteAt(text, at);
    for (const Lead& lead : Leads) {
        if (first >= lead.first && first <= lead.last) {
            return IsWhole(text, at, lead) ? lead.length : 0;
        }
    }
    return 0;
}

std::string Escape(unsigned character) {
    char code[7];
    std::snprintf(code, sizeof code, "\\u%04x", character);
    return code;
}

// Control characters are escaped, those of two bytes too, for a terminal obeys them.
std::string Escaped(const std::string& character) {
    const unsigned first = ByteAt(character, 0);
    const unsigned second = ByteAt(character, 1);
    if (first == '"' || first == '\\') {
        return '\\' + character;
    }
    if (first < ' ' || first == 0x7F) {
        return Escape(first);
    }
    return first == 0xC2 && second < 0xA0 ? Escape(second) : character;
}

} // namespace

std::string ValidUtf8(const std::string& text) {
    std::string valid;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(text, i);
        valid += length > 0 ? text.substr(i, length) : Replacement;
        i += length > 0 ? length : 1;
    }
    return valid;
}

void JsonWriter::Key(const char* name) {
    Separate();
    Quote(name);
    json_ += ": ";
    needsComma_ = false;
}

void JsonWriter::Text(const std::string& text) {
    Separate();
    Quote(ValidUtf8(Utf8Of(text)));
    needsComma_ = true;
}

void JsonWriter::Number(std::int64_t number) {
    Separate();
    json_ += std::to_string(number);
    needsComma_ = true;
}

void JsonWriter::Separate() {
    if (needsComma_) {
        json_ += ", ";
    }
}

void JsonWriter::Open(char bracket) {
    Separate();
    json_ += bracket;
    needsComma_ = false;
}

void JsonWriter::Close(char bracket) {
    json_ += bracket;
    needsComma_ = true;
}

void JsonWriter::Quote(const std::string& utf8) {
    json_ += '"';
    for (std::size_t i = 0; i < utf8.size(); i += CharacterLength(utf8, i)) {
        json_ += Escaped(utf8.substr(i, CharacterLength(utf8, i)));
    }
    json_ += '"';
}

} // namespace lumbrix::cli
