// Image resources, the blocks that JPEG and TIFF files hold since Photoshop, and the IPTC data among them.
#include "imaginglibrary/codecs/metadata/photoshop.h"

#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <functional>

namespace imaginglibrary {

namespace {

constexpr std::string_view ResourceSign = "8BIM";
constexpr std::uint16_t IptcResource = 0x0404;
constexpr std::uint16_t ThumbnailResources[] = {0x0409, 0x040C};
constexpr std::uint8_t IptcSign = 0x1C;

struct Resource {
    std::uint16_t number;
    std::string_view data;
    std::string_view whole; // with its name and its length
};

// Takes the first resource off; false where there is none that is whole.
bool TakeResource(std::string_view& resources, Resource& resource) {
    constexpr std::size_t HeadBytes = 6; // sign and number
    constexpr std::size_t LengthBytes = 4;
    const auto byteAt = [&](std::size_t at) { return reinterpret_cast<const std::uint8_t*>(resources.data()) + at; };
    if (resources.size() <= HeadBytes || !resources.starts_with(ResourceSign)) {
        return false;
    }
    const std::size_t lengthAt = HeadBytes + (*byteAt(HeadBytes) + std::size_t{2}) / 2 * 2; // behind a name
    if (resources.size() < lengthAt + LengthBytes) {
        return false;
    }
    const std::size_t dataAt = lengthAt + LengthBytes;
    const std::size_t length = BigEndian32(byteAt(lengthAt));
    if (length > resources.size() - dataAt) {
        return false;
    }
    const std::size_t bytes = std::min(resources.size(), dataAt + length + length % 2);
    resource = {BigEndian16(byteAt(4)), resources.substr(dataAt, length), resources.substr(0, bytes)};
    resources.remove_prefix(bytes);
    return true;
}

std::string WithPadding(std::string_view whole) { return std::string(whole) + std::string(whole.size() % 2, '\0'); }

// All resources that are wanted, one behind the other.
std::string Kept(std::string_view resources, const std::function<bool(const Resource&)>& isWanted) {
    std::string kept;
    for (Resource resource; TakeResource(resources, resource);) {
        if (isWanted(resource)) {
            kept += WithPadding(resource.whole);
        }
    }
    return kept;
}

std::string MakeResource(std::uint16_t number, std::string_view data) {
    std::string resource(ResourceSign);
    resource += {static_cast<char>(number >> 8), static_cast<char>(number), '\0', '\0'};
    for (int shift = 24; shift >= 0; shift -= 8) {
        resource.push_back(static_cast<char>(data.size() >> shift));
    }
    return WithPadding(resource + std::string(data));
}

bool IsBytes(const Property& item) { return item.type == PropertyType::Byte || item.type == PropertyType::Undefined; }

std::string_view ResourcesOf(const PropertyList& properties) {
    const Property* item = properties.Find(ResourcesTag);
    if (item == nullptr || !IsBytes(*item)) {
        return {};
    }
    return {reinterpret_cast<const char*>(item->value.data()), item->value.size()};
}

Property BytesOf(std::uint32_t tag, PropertyType type, std::string_view bytes) {
    return {tag, type, {bytes.begin(), bytes.end()}};
}

} // namespace

void AddResources(std::string_view resources, PropertyList& properties) {
    std::string_view iptc;
    const std::string others = Kept(resources, [&](const Resource& resource) {
        if (resource.number == IptcResource && iptc.empty()) {
            iptc = resource.data;
        }
        return resource.number != IptcResource;
    });
    if (!iptc.empty()) {
        properties.Set(BytesOf(IptcTag, PropertyType::Undefined, iptc));
    }
    if (!others.empty()) {
        properties.Set(BytesOf(ResourcesTag, PropertyType::Byte, others));
    }
}

std::string ResourcesFor(const PropertyList& properties) {
    const auto iptc = IptcOf(properties);
    std::string resources;
    if (!iptc.empty()) {
        resources = MakeResource(IptcResource, {reinterpret_cast<const char*>(iptc.data()), iptc.size()});
    }
    resources += Kept(ResourcesOf(properties),
                      [&](const Resource& resource) { return resource.number != IptcResource || iptc.empty(); });
    return resources.size() <= MaximumCarriedBytes ? resources : std::string();
}

std::vector<std::uint8_t> IptcOf(const PropertyList& properties) {
    const Property* item = properties.Find(IptcTag);
    if (item == nullptr || (!IsBytes(*item) && item->type != PropertyType::Long)) {
        return {};
    }
    std::vector<std::uint8_t> bytes = item->value;
    const bool isSwapped = item->type == PropertyType::Long && bytes.size() >= 4 && bytes[3] == IptcSign;
    for (std::size_t at = 0; isSwapped && at + 4 <= bytes.size(); at += 4) {
        std::reverse(&bytes[at], &bytes[at] + 4);
    }
    return bytes;
}

void RemoveThumbnailResources(PropertyList& properties) {
    const std::string_view resources = ResourcesOf(properties);
    if (resources.empty()) {
        return;
    }
    const auto isThumbnail = [](const Resource& resource) {
        return std::ranges::find(ThumbnailResources, resource.number) != std::end(ThumbnailResources);
    };
    const std::string kept = Kept(resources, std::not_fn(isThumbnail));
    if (kept.empty()) {
        properties.RemoveIf([](const Property& item) { return item.tag == ResourcesTag; });
    } else if (kept.size() < resources.size()) {
        properties.Set(BytesOf(ResourcesTag, PropertyType::Byte, kept));
    }
}

} // namespace imaginglibrary
