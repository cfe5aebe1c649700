// Fonts by way of the system's own glyphs.
#include "imaginglibrary/text/fontface.h"

#include <windows.h>

#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr int FallbackEm = 2048; // of a font that does not tell its own

struct ScreenContext {
    HDC handle = CreateCompatibleDC(nullptr);
    ScreenContext() = default;
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    ~ScreenContext() { DeleteDC(handle); }
};

LOGFONTW DescriptionOf(const std::u16string& family, int height, bool isBold, bool isItalic) {
    LOGFONTW description{};
    description.lfHeight = -height;
    description.lfWeight = isBold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = isItalic ? TRUE : FALSE;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    family.copy(reinterpret_cast<char16_t*>(description.lfFaceName), LF_FACESIZE - 1);
    return description;
}

double FixedToDouble(const FIXED& number) { return number.value + number.fract / 65536.0; }

// Turns what GetGlyphOutline gives for GGO_NATIVE into a path: contours of lines and quadratic or cubic curves, y
// growing upwards.
class NativeOutline {
  public:
    NativeOutline(const std::vector<std::uint8_t>& bytes, double em, Path& path)
        : bytes_(bytes), em_(em), path_(path) {}

    void Collect() {
        std::size_t at = 0;
        while (at + sizeof(TTPOLYGONHEADER) <= bytes_.size()) {
            const auto header = Read<TTPOLYGONHEADER>(at);
            const std::size_t end = std::min<std::size_t>(bytes_.size(), at + header.cb);
            path_.MoveTo(At(header.pfxStart));
            CollectContour(at + sizeof header, end);
            if (header.cb == 0) {
                return;
            }
            at = end;
        }
    }

  private:
    static constexpr std::size_t CurveHeaderBytes = 2 * sizeof(WORD);

    void CollectContour(std::size_t at, std::size_t end) {
        while (at + CurveHeaderBytes <= end) {
            const auto kind = Read<WORD>(at);
            const auto count = Read<WORD>(at + sizeof(WORD));
            at += CurveHeaderBytes;
            std::vector<Point> points;
            for (int i = 0; i < count && at + sizeof(POINTFX) <= end; ++i, at += sizeof(POINTFX)) {
                points.push_back(At(Read<POINTFX>(at)));
            }
            AddCurve(kind, points);
        }
    }

    void AddCurve(WORD kind, const std::vector<Point>& points) {
        if (kind == TT_PRIM_LINE) {
            for (const Point& point : points) {
                path_.LineTo(point);
            }
        } else if (kind == TT_PRIM_QSPLINE) {
            // Between two control points lies a point of the curve, half way.
            for (std::size_t i = 0; i + 1 < points.size(); ++i) {
                const bool isLast = i + 2 == points.size();
                const Point middle{(points[i].x + points[i + 1].x) / 2, (points[i].y + points[i + 1].y) / 2};
                path_.QuadraticTo(points[i], isLast ? points[i + 1] : middle);
            }
        } else {
            for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
                path_.CubicTo(points[i], points[i + 1], points[i + 2]);
            }
        }
    }

    template <class Record> Record Read(std::size_t at) const {
        Record record;
        std::memcpy(&record, bytes_.data() + at, sizeof record);
        return record;
    }

    Point At(const POINTFX& point) const { return {FixedToDouble(point.x) / em_, -FixedToDouble(point.y) / em_}; }

    const std::vector<std::uint8_t>& bytes_;
    double em_;
    Path& path_;
};

// The font at a size of one em in its own units, so that nothing is rounded to pixels.
class WindowsFontFace : public FontFace {
  public:
    WindowsFontFace(const std::u16string& family, bool isBold, bool isItalic) {
        Select(DescriptionOf(family, FallbackEm, isBold, isItalic));
        if (ReadMetrics() && metrics_.otmEMSquare != static_cast<UINT>(em_) && metrics_.otmEMSquare != 0) {
            em_ = static_cast<int>(metrics_.otmEMSquare);
            Select(DescriptionOf(family, em_, isBold, isItalic));
            ReadMetrics();
        }
    }

    ~WindowsFontFace() override {
        SelectObject(context_.handle, GetStockObject(SYSTEM_FONT));
        DeleteObject(font_);
    }
    WindowsFontFace(const WindowsFontFace&) = delete;
    WindowsFontFace& operator=(const WindowsFontFace&) = delete;

    // Whether the font is one of outlines.
    bool IsOpen() const { return isOpen_; }

    FontMeasures Measures() const override {
        const TEXTMETRICW& text = metrics_.otmTextMetrics;
        return {InEm(text.tmAscent),
                InEm(text.tmDescent),
                InEm(text.tmHeight + text.tmExternalLeading),
                InEm(-metrics_.otmsUnderscorePosition),
                InEm(metrics_.otmsUnderscoreSize),
                InEm(-metrics_.otmsStrikeoutPosition),
                InEm(static_cast<double>(metrics_.otmsStrikeoutSize))};
    }

    Glyph GlyphOf(char32_t character) const override {
        const std::lock_guard lock(mutex_);
        const MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
        const UINT code = character > 0xFFFF ? 0xFFFD : static_cast<UINT>(character);
        GLYPHMETRICS metrics{};
        const DWORD bytes =
            GetGlyphOutlineW(context_.handle, code, GGO_NATIVE | GGO_UNHINTED, &metrics, 0, nullptr, &identity);
        if (bytes == GDI_ERROR) {
            return {};
        }
        Glyph glyph{InEm(metrics.gmCellIncX), {}};
        std::vector<std::uint8_t> outline(bytes);
        if (bytes > 0 && GetGlyphOutlineW(context_.handle, code, GGO_NATIVE | GGO_UNHINTED, &metrics, bytes,
                                          outline.data(), &identity) != GDI_ERROR) {
            NativeOutline(outline, em_, glyph.outline).Collect();
        }
        return glyph;
    }

  private:
    double InEm(double units) const { return units / em_; }

    void Select(const LOGFONTW& description) {
        HFONT font = CreateFontIndirectW(&description);
        SelectObject(context_.handle, font);
        if (font_ != nullptr) {
            DeleteObject(font_);
        }
        font_ = font;
    }

    bool ReadMetrics() {
        metrics_.otmSize = sizeof metrics_;
        isOpen_ = GetOutlineTextMetricsW(context_.handle, sizeof metrics_, &metrics_) != 0;
        return isOpen_;
    }

    mutable std::mutex mutex_; // a device context belongs to one thread at a time
    ScreenContext context_;
    HFONT font_ = nullptr;
    int em_ = FallbackEm;
    bool isOpen_ = false;
    OUTLINETEXTMETRICW metrics_{};
};

// Goes through all fonts of a family; `found` is a bool to set.
int CALLBACK NoteOutlineFont(const LOGFONTW*, const TEXTMETRICW*, DWORD type, LPARAM found) {
    constexpr int GoOn = 1;
    if (type == TRUETYPE_FONTTYPE) {
        *reinterpret_cast<bool*>(found) = true;
    }
    return GoOn;
}

} // namespace

bool HasFontFamily(const std::u16string& name) {
    if (name.empty() || name.size() >= LF_FACESIZE) {
        return false;
    }
    const ScreenContext context;
    LOGFONTW description = DescriptionOf(name, 0, false, false);
    bool isThere = false;
    EnumFontFamiliesExW(context.handle, &description, NoteOutlineFont, reinterpret_cast<LPARAM>(&isThere), 0);
    return isThere;
}

Result<std::shared_ptr<const FontFace>> OpenUnsharedFontFace(const std::u16string& family, bool isBold, bool isItalic) {
    auto face = std::make_shared<const WindowsFontFace>(family, isBold, isItalic);
    if (!face->IsOpen()) {
        return Status::FontStyleNotFound;
    }
    return std::shared_ptr<const FontFace>(std::move(face));
}

} // namespace imaginglibrary
