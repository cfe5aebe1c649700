// Fonts by way of fontconfig and FreeType.
#include "imaginglibrary/files/path_linux.h"
#include "imaginglibrary/text/fontface.h"

#include <dlfcn.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <mutex>
#include <new>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr double SyntheticSlant = 0.2;      // sideways per upwards, about 11 degrees
constexpr double SyntheticBoldening = 0.04; // of the em

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

struct FontsDeleter {
    void operator()(FcConfig* fonts) const { FcConfigDestroy(fonts); }
};

// Fontconfig has memory of its own for as long as it is loaded, and would lose that each time it is unloaded with us.
void KeepFontconfigLoaded() {
    Dl_info place{};
    if (dladdr(reinterpret_cast<const void*>(&FcInitLoadConfigAndFonts), &place) != 0) {
        dlopen(place.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

// The fonts of the system, and its rules about them. Our own copy, not the one of the whole process, so that nothing is
// left of it when this library is unloaded. Null, which stands for that one, where memory ran out.
FcConfig* Fonts() {
    static const std::unique_ptr<FcConfig, FontsDeleter> fonts = [] {
        KeepFontconfigLoaded();
        return std::unique_ptr<FcConfig, FontsDeleter>(FcInitLoadConfigAndFonts());
    }();
    return fonts.get();
}

const FcChar8* Bytes(const std::string& text) { return reinterpret_cast<const FcChar8*>(text.c_str()); }

// What is asked for, with what the system's rules add: other names for the family, metric-compatible ones among them.
Pattern WantedPattern(const std::string& family, bool isBold, bool isItalic) {
    Pattern pattern(FcPatternCreate());
    if (pattern == nullptr) {
        throw std::bad_alloc();
    }
    FcPatternAddString(pattern.get(), FC_FAMILY, Bytes(family));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(Fonts(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

// Whether a font belongs to one of the names that count as the family itself. Names that are only a last resort are
// bound weakly.
bool IsOfFamily(FcPattern* wanted, FcPattern* font) {
    FcValue name;
    FcValueBinding binding = FcValueBindingWeak;
    for (int i = 0; FcPatternGetWithBinding(wanted, FC_FAMILY, i, &name, &binding) == FcResultMatch; ++i) {
        if (binding == FcValueBindingWeak) {
            continue;
        }
        FcChar8* own = nullptr;
        for (int k = 0; FcPatternGetString(font, FC_FAMILY, k, &own) == FcResultMatch; ++k) {
            if (FcStrCmpIgnoreCase(name.u.s, own) == 0) {
                return true;
            }
        }
    }
    return false;
}

Pattern FindFont(const std::string& family, bool isBold, bool isItalic) {
    const Pattern wanted = WantedPattern(family, isBold, isItalic);
    FcResult result = FcResultNoMatch;
    Pattern font(FcFontMatch(Fonts(), wanted.get(), &result));
    if (font == nullptr || !IsOfFamily(wanted.get(), font.get())) {
        return nullptr;
    }
    return font;
}

// Any font that has a character, preferably one that goes with the family.
Pattern FindFontWith(char32_t character, const std::string& family, bool isBold, bool isItalic) {
    const Pattern wanted = WantedPattern(family, isBold, isItalic);
    FcCharSet* characters = FcCharSetCreate();
    if (characters == nullptr) {
        throw std::bad_alloc();
    }
    FcCharSetAddChar(characters, character);
    FcPatternAddCharSet(wanted.get(), FC_CHARSET, characters);
    FcCharSetDestroy(characters);
    FcResult result = FcResultNoMatch;
    return Pattern(FcFontMatch(Fonts(), wanted.get(), &result));
}

int IntegerOf(FcPattern* font, const char* object, int otherwise) {
    int value = otherwise;
    return FcPatternGetInteger(font, object, 0, &value) == FcResultMatch ? value : otherwise;
}

// Whether a font has to be made bold. Where the system's rules ask for that they call the font itself bold already.
bool HasToBeEmboldened(FcPattern* font) {
    FcBool isAsked = FcFalse;
    return IntegerOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR) < FC_WEIGHT_DEMIBOLD ||
           (FcPatternGetBool(font, FC_EMBOLDEN, 0, &isAsked) == FcResultMatch && isAsked == FcTrue);
}

// The same for a slant.
bool HasToBeSlanted(FcPattern* font) {
    FcMatrix* asked = nullptr;
    return IntegerOf(font, FC_SLANT, FC_SLANT_ROMAN) == FC_SLANT_ROMAN ||
           (FcPatternGetMatrix(font, FC_MATRIX, 0, &asked) == FcResultMatch && asked->xy != 0);
}

// Whether a call of FreeType's worked. What fails for want of memory is no gap in a font.
bool Worked(FT_Error error) {
    if (error == FT_Err_Out_Of_Memory) {
        throw std::bad_alloc();
    }
    return error == FT_Err_Ok;
}

// Collects what FreeType tells of an outline. Its y grows upwards.
class OutlineCollector {
  public:
    OutlineCollector(Path& path, double unitsPerEm) : path_(path), unitsPerEm_(unitsPerEm) {}

    void Collect(FT_Outline& outline) {
        FT_Outline_Funcs functions{};
        functions.move_to = [](const FT_Vector* to, void* self) {
            Of(self).path_.MoveTo(Of(self).At(to));
            return 0;
        };
        functions.line_to = [](const FT_Vector* to, void* self) {
            Of(self).path_.LineTo(Of(self).At(to));
            return 0;
        };
        functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* self) {
            Of(self).path_.QuadraticTo(Of(self).At(control), Of(self).At(to));
            return 0;
        };
        functions.cubic_to = [](const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* self) {
            Of(self).path_.CubicTo(Of(self).At(control1), Of(self).At(control2), Of(self).At(to));
            return 0;
        };
        FT_Outline_Decompose(&outline, &functions, this);
    }

  private:
    static OutlineCollector& Of(void* self) { return *static_cast<OutlineCollector*>(self); }
    Point At(const FT_Vector* point) const {
        return {static_cast<double>(point->x) / unitsPerEm_, -static_cast<double>(point->y) / unitsPerEm_};
    }

    Path& path_;
    double unitsPerEm_;
};

class LinuxFontFace : public FontFace {
  public:
    static std::shared_ptr<const LinuxFontFace> Open(FcPattern* font, std::string family, bool isBold, bool isItalic) {
        auto face = std::make_shared<LinuxFontFace>();
        FcChar8* file = nullptr;
        if (!Worked(FT_Init_FreeType(&face->library_)) ||
            FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch ||
            !Worked(FT_New_Face(face->library_, reinterpret_cast<const char*>(file), IntegerOf(font, FC_INDEX, 0),
                                &face->face_)) ||
            !FT_IS_SCALABLE(face->face_)) {
            return nullptr;
        }
        face->family_ = std::move(family);
        face->isBold_ = isBold;
        face->isItalic_ = isItalic;
        face->makeBold_ = isBold && HasToBeEmboldened(font);
        face->makeItalic_ = isItalic && HasToBeSlanted(font);
        return face;
    }

    LinuxFontFace() = default;
    LinuxFontFace(const LinuxFontFace&) = delete;
    LinuxFontFace& operator=(const LinuxFontFace&) = delete;
    ~LinuxFontFace() override {
        if (face_ != nullptr) {
            FT_Done_Face(face_);
        }
        if (library_ != nullptr) {
            FT_Done_FreeType(library_);
        }
    }

    FontMeasures Measures() const override {
        const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face_, FT_SFNT_OS2));
        const bool hasOs2 = os2 != nullptr;
        const double ascent = hasOs2 ? os2->usWinAscent : face_->ascender;
        const double descent = hasOs2 ? os2->usWinDescent : -face_->descender;
        const double thickness = face_->underline_thickness;
        const double middle = face_->units_per_EM * 0.25;
        return {InEm(ascent),
                InEm(descent),
                InEm(std::max<double>(face_->height, ascent + descent)),
                InEm(-face_->underline_position - thickness / 2),
                InEm(thickness),
                InEm(-(hasOs2 ? os2->yStrikeoutPosition : middle + thickness / 2)),
                InEm(hasOs2 ? os2->yStrikeoutSize : thickness)};
    }

    Glyph GlyphOf(char32_t character) const override {
        const std::lock_guard lock(mutex_);
        const FT_UInt index = FT_Get_Char_Index(face_, character);
        if (index == 0) {
            if (const LinuxFontFace* other = StandInFor(character)) {
                return other->GlyphOf(character);
            }
        }
        if (!Worked(FT_Load_Glyph(face_, index, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP))) {
            return {};
        }
        FT_Outline& outline = face_->glyph->outline;
        if (FT_Outline_Get_Orientation(&outline) == FT_ORIENTATION_POSTSCRIPT) {
            FT_Outline_Reverse(&outline); // all contours of a text run the same way round
        }
        double advance = InEm(static_cast<double>(face_->glyph->metrics.horiAdvance));
        if (makeBold_) {
            FT_Outline_Embolden(&outline, static_cast<FT_Pos>(SyntheticBoldening * face_->units_per_EM));
            advance += SyntheticBoldening;
        }
        if (makeItalic_) {
            constexpr FT_Fixed One = 0x10000;
            const FT_Matrix slant{One, static_cast<FT_Fixed>(SyntheticSlant * One), 0, One};
            FT_Outline_Transform(&outline, &slant);
        }
        Glyph glyph{advance, {}};
        OutlineCollector(glyph.outline, face_->units_per_EM).Collect(outline);
        return glyph;
    }

  private:
    double InEm(double units) const { return units / face_->units_per_EM; }

    // Another font that has a character which this one lacks; null where there is none. Fonts once found are kept.
    const LinuxFontFace* StandInFor(char32_t character) const {
        for (const auto& known : standIns_) {
            if (FT_Get_Char_Index(known->face_, character) != 0) {
                return known.get();
            }
        }
        const Pattern font = FindFontWith(character, family_, isBold_, isItalic_);
        auto found = font != nullptr ? Open(font.get(), family_, isBold_, isItalic_) : nullptr;
        if (found == nullptr || FT_Get_Char_Index(found->face_, character) == 0) {
            return nullptr;
        }
        standIns_.push_back(std::move(found));
        return standIns_.back().get();
    }

    mutable std::mutex mutex_; // FreeType keeps the glyph that it loaded last in the face
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
    std::string family_;
    bool isBold_ = false;
    bool isItalic_ = false;
    bool makeBold_ = false;
    bool makeItalic_ = false;
    mutable std::vector<std::shared_ptr<const LinuxFontFace>> standIns_;
};

} // namespace

bool HasFontFamily(const std::u16string& name) {
    return !name.empty() && FindFont(PathBytes(name), false, false) != nullptr;
}

Result<std::shared_ptr<const FontFace>> OpenUnsharedFontFace(const std::u16string& family, bool isBold, bool isItalic) {
    const std::string name = PathBytes(family);
    const Pattern font = FindFont(name, isBold, isItalic);
    if (font == nullptr) {
        return Status::FontFamilyNotFound;
    }
    auto face = LinuxFontFace::Open(font.get(), name, isBold, isItalic);
    if (face == nullptr) {
        return Status::FontStyleNotFound;
    }
    return std::shared_ptr<const FontFace>(std::move(face));
}

} // namespace imaginglibrary
