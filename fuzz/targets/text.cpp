// Text between code page and wide text, font families by name, and the outlines of text.
#include "platform/text.h"
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "imaginglibrary/text/textlayout.h"

#include <cmath>

namespace {

constexpr std::size_t MostCharacters = 64;

void CheckConversion(const std::string& text) {
    const std::u16string wide = lumbrix::ToWide(text);
    fuzz::Require(lumbrix::ToNarrow(wide) == text, "8-bit text survives the way to wide text and back");
    fuzz::Require(wide.size() <= text.size(), "wide text has no more units than bytes");
    lumbrix::ToWide(text, lumbrix::TextEncoding::Utf8);
}

void CheckWide(const std::u16string& wide) {
    const std::string text = lumbrix::ToNarrow(wide);
    fuzz::Require(text.size() <= wide.size() * 3, "8-bit text has at most three bytes for a unit");
    fuzz::Require(lumbrix::ToNarrow(lumbrix::ToWide(text)) == text, "8-bit text survives the way back");
}

void FindFamily(const std::u16string& name) {
    if (imaginglibrary::HasFontFamily(name)) {
        fuzz::Require(imaginglibrary::OpenFontFace(name, true, false).Ok(), "a family that is there can be opened");
    }
}

void OutlineText(fuzz::Choices& choices, std::u16string_view text) {
    using namespace imaginglibrary;
    static const auto face = OpenFontFace(u"Liberation Sans", false, false);
    fuzz::Require(face.Ok(), "the font of the tests is installed");
    const TextStyle style{.size = choices.Byte() * (choices.Coin() ? 0.25 : 1e4),
                          .isUnderlined = choices.Coin(),
                          .isStruckOut = choices.Coin()};
    for (const Edge& edge : TextOutline(**face, text, style, {1, 2}, Affine::Translation(choices.Byte(), 0))) {
        fuzz::Require(std::isfinite(edge.from.x) && std::isfinite(edge.from.y) && std::isfinite(edge.to.x) &&
                          std::isfinite(edge.to.y),
                      "outlines have places");
    }
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    fuzz::Choices choices(bytes, count);
    fuzz::Choices styles = choices;
    const std::string text = choices.Rest();
    CheckConversion(text);
    std::u16string wide(std::min(text.size() / 2, MostCharacters), u'\0');
    for (std::size_t i = 0; i < wide.size(); ++i) {
        wide[i] = static_cast<char16_t>(static_cast<unsigned char>(text[2 * i]) |
                                        static_cast<unsigned char>(text[2 * i + 1]) << 8);
    }
    CheckWide(wide);
    FindFamily(wide);
    FindFamily(lumbrix::ToWide(text.substr(0, MostCharacters)));
    OutlineText(styles, wide);
}
