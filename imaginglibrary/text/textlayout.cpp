// Where the glyphs of a text stand.
#include "imaginglibrary/text/textlayout.h"

#include <map>

namespace imaginglibrary {

namespace {

constexpr double LeadingSpace = 1.0 / 6; // em
constexpr int BlanksPerTab = 8;

// Whole characters out of UTF-16; half of a pair counts as U+FFFD.
std::u32string Characters(std::u16string_view text) {
    const auto isHigh = [](char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
    const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
    std::u32string characters;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1])) {
            const char32_t high = text[i] - 0xD800u;
            characters.push_back(0x10000 + (high << 10) + (text[++i] - 0xDC00u));
        } else {
            characters.push_back(isHigh(text[i]) || isLow(text[i]) ? 0xFFFD : text[i]);
        }
    }
    return characters;
}

// Sets a text line by line; positions are parts of the em from the corner.
class TextSetter {
  public:
    TextSetter(const FontFace& face, const TextStyle& style, const Affine& fromEm, std::vector<Edge>& edges)
        : face_(face), measures_(face.Measures()), style_(style), fromEm_(fromEm), edges_(edges),
          baseline_(measures_.ascent) {}

    void Set(const std::u32string& text) {
        for (const char32_t character : text) {
            if (character == U'\n') {
                EndLine();
            } else if (character == U'\t') {
                GoToTabStop();
            } else if (character != U'\r') {
                SetCharacter(character);
            }
        }
        EndLine();
    }

  private:
    void SetCharacter(char32_t character) {
        const Glyph& glyph = GlyphOf(character);
        glyph.outline.AppendEdges(Affine::Translation(x_, baseline_).Then(fromEm_), edges_);
        x_ += glyph.advance;
    }

    void GoToTabStop() {
        const double step = GlyphOf(U' ').advance * BlanksPerTab;
        if (step > 0) {
            x_ = LeadingSpace + (std::floor((x_ - LeadingSpace) / step + 1e-9) + 1) * step;
        }
    }

    void EndLine() {
        if (x_ > LeadingSpace && style_.isUnderlined) {
            AddLine(measures_.underlineTop, measures_.underlineThickness);
        }
        if (x_ > LeadingSpace && style_.isStruckOut) {
            AddLine(measures_.strikeoutTop, measures_.strikeoutThickness);
        }
        x_ = LeadingSpace;
        baseline_ += measures_.lineSpacing;
    }

    // Glyph outlines run clockwise on the screen; so do these lines, and thus unite with what they cross.
    void AddLine(double top, double thickness) {
        Path line;
        line.AddRectangle({LeadingSpace, baseline_ + top}, {x_, baseline_ + top + thickness});
        line.AppendEdges(fromEm_, edges_);
    }

    const Glyph& GlyphOf(char32_t character) {
        const auto [place, isNew] = glyphs_.try_emplace(character);
        if (isNew) {
            place->second = face_.GlyphOf(character);
        }
        return place->second;
    }

    const FontFace& face_;
    FontMeasures measures_;
    const TextStyle& style_;
    Affine fromEm_;
    std::vector<Edge>& edges_;
    std::map<char32_t, Glyph> glyphs_;
    double x_ = LeadingSpace;
    double baseline_;
};

} // namespace

std::vector<Edge> TextOutline(const FontFace& face, std::u16string_view text, const TextStyle& style, Point corner,
                              const Affine& toSurface) {
    const Affine fromEm =
        Affine::Scaling(style.size, style.size).Then(Affine::Translation(corner.x, corner.y)).Then(toSurface);
    std::vector<Edge> edges;
    TextSetter(face, style, fromEm, edges).Set(Characters(text));
    return edges;
}

} // namespace imaginglibrary
