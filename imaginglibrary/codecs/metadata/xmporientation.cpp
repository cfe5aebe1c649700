// The orientation that an XMP packet tells of.
#include "imaginglibrary/codecs/metadata/xmporientation.h"

#include <algorithm>
#include <set>

namespace imaginglibrary {

namespace {

constexpr std::size_t None = std::string_view::npos;

struct Attribute {
    std::string_view name;
    std::string_view value;
    std::size_t start;
    std::size_t end;
};

// Behind the text that ends something; npos where it is not there.
std::size_t Behind(std::string_view packet, std::string_view end, std::size_t from) {
    const std::size_t at = packet.find(end, from);
    return at == None ? at : at + end.size();
}

// Shows each attribute, from behind the name of a tag. Gives back where the tag ends.
template <class See> std::size_t PassAttributes(std::string_view packet, std::size_t at, const See& see) {
    while (true) {
        at = packet.find_first_not_of(" \t\r\n/", at);
        if (at == None || packet[at] == '>') {
            return at == None ? at : at + 1;
        }
        const std::size_t nameEnd = packet.find_first_of(" \t\r\n=>", at);
        const std::size_t quote = packet.find_first_of("\"'>", at);
        if (quote == None || packet[quote] == '>') {
            return quote == None ? quote : quote + 1;
        }
        const std::size_t end = packet.find(packet[quote], quote + 1);
        if (end == None) {
            return end;
        }
        see(Attribute{packet.substr(at, nameEnd - at), packet.substr(quote + 1, end - quote - 1), at, end + 1});
        at = end + 1;
    }
}

// Shows each tag by its place and its name; `pass` gives back where to go on. What stands in comments and the like is
// none.
template <class Pass> void ForEachTag(std::string_view packet, const Pass& pass) {
    constexpr struct { std::string_view start, end; } Others[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (std::size_t at = packet.find('<'); at != None;) {
        const auto* other =
            std::ranges::find_if(Others, [&](const auto& kind) { return packet.substr(at).starts_with(kind.start); });
        std::size_t behind = 0;
        if (other != std::end(Others)) {
            behind = Behind(packet, other->end, at);
        } else {
            const std::size_t nameEnd = std::min(packet.find_first_of(" \t\r\n/>", at + 1), packet.size());
            behind = pass(at, packet.substr(at + 1, nameEnd - at - 1));
        }
        at = behind == None ? behind : packet.find('<', behind);
    }
}

// What a packet calls the property: a name for each prefix that a tag gives the namespace.
std::set<std::string, std::less<>> NamesIn(std::string_view packet) {
    constexpr std::string_view Namespace = "http://ns.adobe.com/tiff/1.0/";
    constexpr std::string_view Binding = "xmlns:";
    std::set<std::string, std::less<>> names;
    ForEachTag(packet, [&](std::size_t start, std::string_view name) {
        return PassAttributes(packet, start + 1 + name.size(), [&](const Attribute& attribute) {
            if (attribute.name.starts_with(Binding) && attribute.value == Namespace) {
                names.insert(std::string(attribute.name.substr(Binding.size())) + ":Orientation");
            }
        });
    });
    return names;
}

} // namespace

std::string WithoutOrientation(std::string_view packet) {
    const auto names = NamesIn(packet);
    std::string result(packet);
    if (names.empty()) {
        return result;
    }
    const auto erase = [&](std::size_t start, std::size_t end) {
        std::fill_n(result.begin() + static_cast<std::ptrdiff_t>(start), end - start, ' ');
    };
    ForEachTag(packet, [&](std::size_t start, std::string_view name) {
        const std::size_t end = PassAttributes(packet, start + 1 + name.size(), [&](const Attribute& attribute) {
            if (names.contains(attribute.name)) {
                erase(attribute.start, attribute.end);
            }
        });
        if (end == None || !names.contains(name)) {
            return end;
        }
        const bool isAlone = packet[end - 2] == '/';
        const std::size_t behind = isAlone ? end : Behind(packet, "</" + std::string(name) + ">", end);
        if (behind != None) {
            erase(start, behind);
        }
        return behind;
    });
    return result;
}

} // namespace imaginglibrary
