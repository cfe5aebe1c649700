// TrueType fonts of a few polygons, put together byte by byte.
#pragma once

#include "tests/support/exifmaker.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tests {

// y grows upwards.
struct FontPoint {
    int x;
    int y;
    bool isOnCurve = true;
};

struct FontGlyph {
    char32_t character; // of any value in the first one, which is the sign for missing characters
    int advance;
    std::vector<FontPoint> contour = {}; // one at most
};

struct FontSpec {
    std::string family;
    std::vector<FontGlyph> glyphs; // by rising characters
    int unitsPerEm = 1000;
    int ascender = 700;
    int descender = -250;
    int lineGap = 100;
    int underlineTop = -100;
    int underlineThickness = 60;
    bool hasWindowsMeasures = false;
    int windowsAscent = 900;
    int windowsDescent = 300;
    int strikeoutTop = 310;
    int strikeoutThickness = 44;
};

namespace fontmaker {

inline std::string Words(const std::vector<int>& numbers) {
    std::string bytes;
    for (const int number : numbers) {
        bytes += NumberBytes(true, static_cast<std::uint16_t>(number), 2);
    }
    return bytes;
}

inline std::string Long(std::uint32_t number) { return NumberBytes(true, number, 4); }

inline std::string Padded(std::string bytes) { return bytes += std::string((4 - bytes.size() % 4) % 4, '\0'); }

inline int Least(const std::vector<FontPoint>& contour, int FontPoint::*coordinate) {
    int least = 0x7FFF;
    for (const FontPoint& point : contour) {
        least = std::min(least, point.*coordinate);
    }
    return least;
}

inline int Greatest(const std::vector<FontPoint>& contour, int FontPoint::*coordinate) {
    int greatest = -0x8000;
    for (const FontPoint& point : contour) {
        greatest = std::max(greatest, point.*coordinate);
    }
    return greatest;
}

inline std::string Outline(const std::vector<FontPoint>& contour) {
    if (contour.empty()) {
        return "";
    }
    std::string bytes =
        Words({1, Least(contour, &FontPoint::x), Least(contour, &FontPoint::y), Greatest(contour, &FontPoint::x),
               Greatest(contour, &FontPoint::y), static_cast<int>(contour.size()) - 1, 0}); // no instructions
    std::string across;
    std::string up;
    FontPoint before{0, 0};
    for (const FontPoint& point : contour) {
        bytes += static_cast<char>(point.isOnCurve);
        across += Words({point.x - before.x});
        up += Words({point.y - before.y});
        before = point;
    }
    return Padded(bytes + across + up);
}

inline std::string Names(const std::string& family) {
    std::string wide;
    for (const char letter : family) {
        wide += {'\0', letter};
    }
    const auto length = static_cast<int>(wide.size());
    constexpr int Windows = 3, Unicode = 1, AmericanEnglish = 0x409, FamilyName = 1;
    return Words({0, 1, 18, Windows, Unicode, AmericanEnglish, FamilyName, length, 0}) + wide;
}

inline std::string Characters(const std::vector<FontGlyph>& glyphs) {
    std::string groups;
    for (std::size_t i = 1; i < glyphs.size(); ++i) {
        groups += Long(glyphs[i].character) + Long(glyphs[i].character) + Long(static_cast<std::uint32_t>(i));
    }
    const auto count = static_cast<std::uint32_t>(glyphs.size() - 1);
    constexpr int Windows = 3, FullUnicode = 10, SegmentedCoverage = 12;
    return Words({0, 1, Windows, FullUnicode}) + Long(12) + Words({SegmentedCoverage, 0}) + Long(16 + 12 * count) +
           Long(0) + Long(count) + groups;
}

} // namespace fontmaker

inline std::string MakeFont(const FontSpec& spec) {
    using namespace fontmaker;
    const auto count = static_cast<int>(spec.glyphs.size());
    std::string outlines;
    std::string places = Long(0);
    std::string advances;
    for (const FontGlyph& glyph : spec.glyphs) {
        outlines += Outline(glyph.contour);
        places += Long(static_cast<std::uint32_t>(outlines.size()));
        advances += Words({glyph.advance, glyph.contour.empty() ? 0 : Least(glyph.contour, &FontPoint::x)});
    }
    const std::string noDate(16, '\0');
    std::map<std::string, std::string> tables{
        {"head", Long(0x10000) + Long(0x10000) + Long(0) + Long(0x5F0F3CF5) + Words({0, spec.unitsPerEm}) + noDate +
                     Words({0, -250, 1000, 1000, 0, 8, 2, 1, 0})}, // long places
        {"hhea", Long(0x10000) + Words({spec.ascender, spec.descender, spec.lineGap, 1000, 0, 0, 1000, 1, 0, 0, 0, 0, 0,
                                        0, 0, count})},
        {"maxp", Long(0x10000) + Words({count, 8, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0})},
        {"post", Long(0x30000) + Long(0) + Words({spec.underlineTop, spec.underlineThickness}) + std::string(20, '\0')},
        {"hmtx", advances},
        {"loca", places},
        {"glyf", outlines},
        {"name", Names(spec.family)},
        {"cmap", Characters(spec.glyphs)}};
    if (spec.hasWindowsMeasures) {
        constexpr int Regular = 400, Medium = 5, RegularStyle = 0x40;
        tables["OS/2"] =
            Words({0, 500, Regular, Medium, 0, 0, 0, 0, 0, 0, 0, 0, 0, spec.strikeoutThickness, spec.strikeoutTop, 0}) +
            std::string(26, '\0') + "LMBR" +
            Words({RegularStyle, 0x20, 0xFFFF, spec.ascender, spec.descender, spec.lineGap, spec.windowsAscent,
                   spec.windowsDescent});
    }
    const std::size_t start = 12 + 16 * tables.size();
    std::string directory = Long(0x10000) + Words({static_cast<int>(tables.size()), 128, 3, 0});
    std::string contents;
    for (const auto& [tag, bytes] : tables) {
        directory += tag + Long(0) + Long(static_cast<std::uint32_t>(start + contents.size())) +
                     Long(static_cast<std::uint32_t>(bytes.size()));
        contents += Padded(bytes);
    }
    return directory + contents;
}

} // namespace tests
