// The orientation that an XMP packet tells of.
#include "imaginglibrary/codecs/metadata/xmporientation.h"

#include <algorithm>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::string_view Namespace = "http://ns.adobe.com/tiff/1.0/";
constexpr std::size_t None = std::string_view::npos;

// What the packet calls the property: a name for each prefix that it gives the namespace, up to more than any has.
std::vector<std::string> NamesIn(std::string_view packet) {
    constexpr std::string_view Binding = "xmlns:";
    constexpr std::size_t LongestBinding = 64; // with the prefix and what stands behind it
    constexpr std::size_t MostNames = 8;
    std::vector<std::string> names;
    for (std::size_t at = packet.find(Namespace); at != None && names.size() < MostNames;
         at = packet.find(Namespace, at + 1)) {
        const std::size_t from = at - std::min(at, LongestBinding);
        const std::string_view before = packet.substr(from, at - from);
        if (const std::size_t start = before.rfind(Binding); start != None) {
            const std::string_view word = before.substr(start + Binding.size());
            names.push_back(std::string(word.substr(0, word.find_first_of(" \t\r\n="))) + ":Orientation");
        }
    }
    return names;
}

// Goes from tag to tag; what stands in comments and the like is none.
class OrientationEraser {
  public:
    explicit OrientationEraser(std::string_view packet) : packet_(packet), names_(NamesIn(packet)), result_(packet) {}

    std::string Erased() {
        std::size_t at = names_.empty() ? None : packet_.find('<');
        while (at != None) {
            const std::size_t behind = EraseInMarkup(at);
            at = behind == None ? behind : packet_.find('<', behind);
        }
        return std::move(result_);
    }

  private:
    bool IsSought(std::string_view name) const { return std::ranges::find(names_, name) != names_.end(); }

    // Behind the text that ends something; npos where it is not there.
    std::size_t Behind(std::string_view end, std::size_t from) const {
        const std::size_t at = packet_.find(end, from);
        return at == None ? at : at + end.size();
    }

    void Erase(std::size_t from, std::size_t to) {
        std::fill(result_.begin() + Place(from), result_.begin() + Place(to), ' ');
    }
    static std::ptrdiff_t Place(std::size_t at) { return static_cast<std::ptrdiff_t>(at); }

    // Gives back where to go on.
    std::size_t EraseInMarkup(std::size_t start) {
        const std::string_view rest = packet_.substr(start);
        if (rest.starts_with("<!--")) {
            return Behind("-->", start);
        }
        if (rest.starts_with("<![CDATA[")) {
            return Behind("]]>", start);
        }
        if (rest.starts_with("<?")) {
            return Behind("?>", start);
        }
        const std::size_t nameEnd = std::min(packet_.find_first_of(" \t\r\n/>", start + 1), packet_.size());
        const std::string_view name = packet_.substr(start + 1, nameEnd - start - 1);
        const std::size_t end = EraseAttributes(nameEnd);
        if (end == None || !IsSought(name)) {
            return end;
        }
        const bool isAlone = packet_[end - 2] == '/';
        const std::size_t behind = isAlone ? end : Behind("</" + std::string(name) + ">", end);
        if (behind != None) {
            Erase(start, behind);
        }
        return behind;
    }

    // From behind the name of a tag. Gives back where the tag ends.
    std::size_t EraseAttributes(std::size_t at) {
        while (true) {
            at = packet_.find_first_not_of(" \t\r\n/", at);
            if (at == None || packet_[at] == '>') {
                return at == None ? at : at + 1;
            }
            const std::size_t nameEnd = packet_.find_first_of(" \t\r\n=>", at);
            const std::size_t quote = packet_.find_first_of("\"'>", at);
            if (quote == None || packet_[quote] == '>') {
                return quote == None ? quote : quote + 1;
            }
            const std::size_t end = packet_.find(packet_[quote], quote + 1);
            if (end == None) {
                return end;
            }
            if (IsSought(packet_.substr(at, nameEnd - at))) {
                Erase(at, end + 1);
            }
            at = end + 1;
        }
    }

    std::string_view packet_;
    std::vector<std::string> names_;
    std::string result_;
};

} // namespace

std::string WithoutOrientation(std::string_view packet) { return OrientationEraser(packet).Erased(); }

} // namespace imaginglibrary
