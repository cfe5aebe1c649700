// Writes a line of text on a picture, or places another picture on it.
#include "imaging/annotate.h"

#include "imaging/adjusting.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/surface.h"

#include <utility>

namespace lumbrix {

namespace {

constexpr std::int32_t Opaque = 255;

FlatStatus DrawText(const OwnedSurface& surface, const Annotation& annotation, FontHandle font) {
    const LayoutRectangle from{annotation.x, annotation.y, 0, 0};
    const std::int32_t alpha = annotation.alpha <= 0 || annotation.alpha > Opaque ? Opaque : annotation.alpha;
    BrushHandle brush = nullptr;
    const FlatStatus made =
        GdipCreateSolidFill(MakeArgb(alpha, annotation.red, annotation.green, annotation.blue), &brush);
    const FlatStatus drawn = GdipDrawString(surface.Get(), annotation.text, font, &from, brush, annotation.encoding);
    return made != Done ? made : drawn;
}

// Where an operation draws: on the source, or on a true-colour copy of it, while the source stays open all the same.
struct DrawnOn {
    OwnedImage copy;
    OwnedSurface surface;
    ImageHandle image = nullptr;
};

// Draws the image over itself, as every annotation begins. The surface is not freed as established: it ends with its
// image, or with the session.
bool BeginDrawing(Course& course, const OwnedImage& source, DrawnOn& drawn) {
    if (!course.IsEstablished() && (!Adjust(course, source.Get()) || !MakeDrawable(course, source, drawn.copy))) {
        return false;
    }
    drawn.image = drawn.copy ? drawn.copy.Get() : source.Get();
    course.Result().result = course.Result().source;
    const bool isOpen = course.Take(Step::Surface, drawn.surface.Open(drawn.image));
    if (course.IsEstablished()) {
        drawn.surface.LeaveBehind();
    }
    if (!isOpen) {
        return false;
    }
    return TakeDrawn(course, Step::Draw, drawn.surface, GdipDrawImage(drawn.surface.Get(), drawn.image, 0, 0));
}

// The pushed state is never taken back.
void SaveDrawn(Course& course, const DrawnOn& drawn, const std::string& destination, const std::string& mimeWord) {
    std::uint32_t state = 0;
    GdipSaveGraphics(drawn.surface.Get(), &state);
    course.FitMetadataTo(drawn.image);
    StripAsWanted(course, drawn.image);
    course.Watch(drawn.image, static_cast<std::uint32_t>(course.Result().result.height));
    course.Save(drawn.image, destination, mimeWord);
}

// What the established procedures answer.
StatusValue DrawnAnswer(const Outcome& outcome) {
    switch (outcome.end.step) {
    case Step::None:
        return Done;
    case Step::Names:
        return BadName;
    default:
        return NotLoaded;
    }
}

// Deleted at its end if there is one, unless it is left behind.
class OwnedFont {
  public:
    explicit OwnedFont(MadeFont font) : font_(font) {}
    ~OwnedFont() { Delete(); }
    OwnedFont(const OwnedFont&) = delete;
    OwnedFont& operator=(const OwnedFont&) = delete;

    FontHandle Get() const { return font_.handle; }
    FlatStatus Status() const { return font_.status; }
    void LeaveBehind() { font_.handle = nullptr; }

    void Delete() {
        if (font_.handle != nullptr) {
            GdipDeleteFont(std::exchange(font_.handle, nullptr));
        }
    }

  private:
    MadeFont font_;
};

} // namespace

std::uint32_t MakeArgb(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue) {
    const auto lowByte = [](std::int32_t value) { return static_cast<std::uint32_t>(value) & 0xFF; };
    return lowByte(alpha) << 24 | lowByte(red) << 16 | lowByte(green) << 8 | lowByte(blue);
}

MadeFont MakeFont(const Annotation& annotation) {
    FontFamilyHandle family = nullptr;
    MadeFont font;
    font.status = GdipCreateFontFamilyFromName(annotation.fontName, &family, annotation.encoding);
    const std::int32_t style =
        (annotation.bold != 0 ? FontStyleBold : 0) | (annotation.italic != 0 ? FontStyleItalic : 0) |
        (annotation.underline != 0 ? FontStyleUnderline : 0) | (annotation.strikeout != 0 ? FontStyleStrikeout : 0);
    const FlatStatus made =
        GdipCreateFont(family, static_cast<float>(annotation.fontSize), style, UnitPixel, &font.handle);
    font.status = font.status != Done ? font.status : made;
    GdipDeleteFontFamily(family);
    return font;
}

Outcome Annotate(const AnnotateOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!course.TakeFormat(order.mimeWord) || !course.Begin(order.destination)) {
        return outcome;
    }
    OwnedFont font(MakeFont(order.annotation));
    if (!course.Take(Step::Font, font.Status())) {
        return outcome;
    }
    OwnedImage image;
    if (!course.Load(order.source, image)) {
        if (course.IsEstablished()) {
            font.LeaveBehind();
            course.LeaveSessionOpen();
        }
        return outcome;
    }
    DrawnOn drawn;
    if (BeginDrawing(course, image, drawn) &&
        TakeDrawn(course, Step::DrawText, drawn.surface, DrawText(drawn.surface, order.annotation, font.Get()))) {
        font.Delete();
        SaveDrawn(course, drawn, order.destination, order.mimeWord);
    } else if (course.IsEstablished()) {
        font.LeaveBehind();
    }
    course.LookForDamage(image.Get());
    return outcome;
}

Outcome Stamp(const StampOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!course.TakeFormat(order.mimeWord) || !course.Begin(order.destination)) {
        return outcome;
    }
    OwnedImage stamp; // goes behind the picture
    OwnedImage image;
    const bool isLoaded = course.Load(order.source, image);
    const bool isStampLoaded = (isLoaded || course.IsEstablished()) && course.Load(order.stamp, stamp, Step::LoadStamp);
    if (!isLoaded || !isStampLoaded) {
        if (course.IsEstablished()) {
            image.LeaveBehind();
            stamp.LeaveBehind();
            course.LeaveSessionOpen();
        }
        return outcome;
    }
    DrawnOn drawn;
    if (!BeginDrawing(course, image, drawn)) {
        return outcome;
    }
    const FlatStatus status = GdipDrawImage(drawn.surface.Get(), stamp.Get(), order.x, order.y);
    const bool isStampLost = status == OutOfMemory && !course.IsEstablished() && IsUndecodable(stamp.Get());
    course.LookForDamageOfStamp(stamp.Get());
    if (TakeDrawn(course, isStampLost ? Step::DrawStamp : Step::Draw, drawn.surface, status)) {
        SaveDrawn(course, drawn, order.destination, order.mimeWord);
    }
    course.LookForDamage(image.Get());
    return outcome;
}

StatusValue AnnotateImage(const std::string& source, const std::string& destination, const Annotation& annotation) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    return DrawnAnswer(Annotate({source, destination, mimeWord, annotation}, AsEstablished));
}

StatusValue StampImage(const std::string& source, const std::string& destination, float x, float y,
                       const std::string& stamp) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    return DrawnAnswer(Stamp({source, destination, mimeWord, x, y, stamp}, AsEstablished));
}

} // namespace lumbrix
