// Settings as a text file that a person can read.
#include "platform/settingsfile.h"

#include "base/lettercase.h"
#include "platform/escaping.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace lumbrix {

namespace {

struct RootName {
    SettingsRoot root;
    std::string_view name;
};
constexpr RootName RootNames[] = {{0x80000000, "HKEY_CLASSES_ROOT"},
                                  {CurrentUserRoot, "HKEY_CURRENT_USER"},
                                  {0x80000002, "HKEY_LOCAL_MACHINE"},
                                  {0x80000003, "HKEY_USERS"},
                                  {0x80000005, "HKEY_CURRENT_CONFIG"}};

bool IsSameWord(std::string_view first, std::string_view second) { return UpperCase(first) == UpperCase(second); }

// The path without empty parts.
std::string Normal(const std::string& path) {
    std::string normal;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        if (end > start) {
            normal += (normal.empty() ? "" : "\\") + path.substr(start, end - start);
        }
        start = end + 1;
    }
    return normal;
}

std::string Quoted(std::string_view text) { return '"' + Escaped(text, "\"") + '"'; }

// Takes a quoted text from the start of a line.
std::optional<std::string> TakeQuoted(std::string_view& line) {
    const std::size_t end = line.find('"', 1);
    if (!line.starts_with('"') || end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view inside = line.substr(1, end - 1);
    line.remove_prefix(end + 1);
    return Unescaped(inside);
}

std::string HeadOf(const SettingsKey& key) {
    const auto* root = std::find_if(std::begin(RootNames), std::end(RootNames),
                                    [&](const RootName& row) { return row.root == key.root; });
    return '[' + std::string(root->name) + (key.path.empty() ? "" : "\\") + Escaped(key.path, "\"") + ']';
}

std::string LineOf(const Setting& value) {
    const std::string start = Quoted(value.name) + " = ";
    const std::size_t zero = value.bytes.find('\0');
    if (value.type == TextType && zero != std::string::npos && zero + 1 == value.bytes.size()) {
        return start + Quoted(std::string_view(value.bytes).substr(0, zero));
    }
    std::string line = start + std::to_string(value.type) + ':';
    for (const char byte : value.bytes) {
        line += ' ' + Hexadecimal(byte);
    }
    return line;
}

std::optional<SettingsKey> KeyFrom(std::string_view line) {
    if (!line.ends_with(']')) {
        return std::nullopt;
    }
    const std::string_view whole = line.substr(1, line.size() - 2);
    const std::size_t end = std::min(whole.find('\\'), whole.size());
    const std::optional<std::string> path = Unescaped(whole.substr(end));
    for (const RootName& row : RootNames) {
        if (path && IsSameWord(whole.substr(0, end), row.name)) {
            return SettingsKey{row.root, *path, {}};
        }
    }
    return std::nullopt;
}

// The type and the bytes of what is no text.
std::optional<Setting> BytesFrom(std::string_view text) {
    Setting value;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value.type);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (error != std::errc() || !text.starts_with(':')) {
        return std::nullopt;
    }
    for (text.remove_prefix(1); !text.empty(); text.remove_prefix(3)) {
        const std::optional<char> byte = FromHexadecimal(text.substr(1, 2));
        if (!text.starts_with(' ') || !byte) {
            return std::nullopt;
        }
        value.bytes += *byte;
    }
    return value;
}

std::optional<Setting> ValueFrom(std::string_view line) {
    constexpr std::string_view Between = " = ";
    const std::optional<std::string> name = TakeQuoted(line);
    if (!name || !line.starts_with(Between)) {
        return std::nullopt;
    }
    line.remove_prefix(Between.size());
    if (!line.starts_with('"')) {
        std::optional<Setting> value = BytesFrom(line);
        if (value) {
            value->name = *name;
        }
        return value;
    }
    const std::optional<std::string> text = TakeQuoted(line);
    if (!text || !line.empty()) {
        return std::nullopt;
    }
    return Setting{*name, TextType, *text + '\0'};
}

} // namespace

Setting* SettingsKey::Find(const std::string& name) {
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const Setting& value) { return IsSameWord(value.name, name); });
    return found == values.end() ? nullptr : &*found;
}

bool IsNamedRoot(SettingsRoot root) {
    return std::any_of(std::begin(RootNames), std::end(RootNames),
                       [&](const RootName& row) { return row.root == root; });
}

Settings::Place Settings::PlaceOf(SettingsRoot root, const std::string& path) {
    return {root, UpperCase(Normal(path))};
}

bool Settings::Has(SettingsRoot root, const std::string& path) const {
    const Place place = PlaceOf(root, path);
    return IsNamedRoot(root) && (place.second.empty() || keys_.contains(place) || HasKeysBelow(root, path));
}

bool Settings::HasKeysBelow(SettingsRoot root, const std::string& path) const {
    Place start = PlaceOf(root, path);
    start.second += start.second.empty() ? "" : "\\";
    const auto next = keys_.upper_bound(start);
    return next != keys_.end() && next->first.first == root && next->first.second.starts_with(start.second);
}

SettingsKey* Settings::Find(SettingsRoot root, const std::string& path) {
    const auto found = keys_.find(PlaceOf(root, path));
    return found == keys_.end() ? nullptr : &found->second;
}

SettingsKey& Settings::Add(SettingsRoot root, const std::string& path) {
    return keys_.try_emplace(PlaceOf(root, path), SettingsKey{root, Normal(path), {}}).first->second;
}

void Settings::Remove(SettingsRoot root, const std::string& path) {
    const std::string normal = Normal(path);
    keys_.erase(PlaceOf(root, normal));
    const std::size_t end = normal.rfind('\\');
    Add(root, end == std::string::npos ? std::string() : normal.substr(0, end));
}

std::string Settings::Text() const {
    std::string text = "# Settings of Lumbrix\n";
    for (const auto& [place, key] : keys_) {
        text += '\n' + HeadOf(key) + '\n';
        for (const Setting& value : key.values) {
            text += LineOf(value) + '\n';
        }
    }
    return text;
}

std::optional<Settings> Settings::FromText(const std::string& text) {
    Settings settings;
    SettingsKey* key = nullptr;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = std::string_view(text).substr(start, end - start);
        start = end + 1;
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (line.starts_with('[')) {
            const std::optional<SettingsKey> head = KeyFrom(line);
            if (!head) {
                return std::nullopt;
            }
            key = &settings.Add(head->root, head->path);
            continue;
        }
        const std::optional<Setting> value = ValueFrom(line);
        if (!value || key == nullptr) {
            return std::nullopt;
        }
        key->values.push_back(*value);
    }
    return settings;
}

} // namespace lumbrix
