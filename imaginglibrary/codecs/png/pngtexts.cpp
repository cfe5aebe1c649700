// Texts in PNG files: their keywords, characters and compression.
#include "imaginglibrary/codecs/png/pngtexts.h"

#include "imaginglibrary/codecs/metadata/exiftags.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

namespace imaginglibrary {

namespace {

struct Keyword {
    const char* name;
    std::uint32_t tag;
};

constexpr Keyword Keywords[] = {
    {"Title", 0x0320},    {"Author", 0x013B}, {"Description", 0x010E}, {"Copyright", 0x8298},
    {"Software", 0x0131}, {"Source", 0x0110}, {"Comment", CommentTag},
};

struct InflateCloser {
    void operator()(z_stream* stream) const { inflateEnd(stream); }
};

// How many bytes the first character takes; 0 where it is not UTF-8. `text` is not empty.
std::size_t CharacterBytes(std::string_view text) {
    const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned first = byteAt(0);
    const std::size_t bytes = first < 0x80                    ? 1
                              : first >= 0xC2 && first < 0xE0 ? 2
                              : first >= 0xE0 && first < 0xF0 ? 3
                              : first >= 0xF0 && first < 0xF5 ? 4
                                                              : 0;
    if (bytes > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    if (bytes > 2) {
        const unsigned second = byteAt(1);
        const bool isOverlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
        const bool isNoCharacter = (first == 0xED && second >= 0xA0) || (first == 0xF4 && second >= 0x90);
        return isOverlong || isNoCharacter ? 0 : bytes;
    }
    return bytes;
}

} // namespace

std::optional<std::uint32_t> TagOfKeyword(std::string_view keyword) {
    const auto* found = std::find_if(std::begin(Keywords), std::end(Keywords),
                                     [=](const Keyword& known) { return known.name == keyword; });
    return found == std::end(Keywords) ? std::nullopt : std::optional(found->tag);
}

const char* KeywordOf(const Property& property) {
    const std::uint32_t tag = IsTextComment(property) ? CommentTag : property.tag;
    const auto* found =
        std::find_if(std::begin(Keywords), std::end(Keywords), [=](const Keyword& known) { return known.tag == tag; });
    return found == std::end(Keywords) || property.type != PropertyType::Ascii ? nullptr : found->name;
}

bool NeedsUtf8(std::string_view text) {
    bool isAscii = true;
    while (!text.empty()) {
        const std::size_t bytes = CharacterBytes(text);
        if (bytes == 0) {
            return false;
        }
        isAscii = isAscii && bytes == 1;
        text.remove_prefix(bytes);
    }
    return !isAscii;
}

std::optional<std::string> Inflated(std::string_view data, std::size_t mostBytes, std::size_t& made) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) {
        return std::nullopt;
    }
    const std::unique_ptr<z_stream, InflateCloser> closer(&stream);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    std::string text;
    std::array<char, 16384> buffer;
    for (int result = Z_OK; result != Z_STREAM_END;) {
        stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
        stream.avail_out = static_cast<uInt>(buffer.size());
        result = inflate(&stream, Z_NO_FLUSH);
        const std::size_t count = buffer.size() - stream.avail_out;
        made += count;
        if ((result != Z_OK && result != Z_STREAM_END) || made > mostBytes) {
            return std::nullopt;
        }
        text.append(buffer.data(), count);
    }
    return text;
}

} // namespace imaginglibrary
