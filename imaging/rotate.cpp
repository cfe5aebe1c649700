// Turns an image file by right angles and flips it.
#include "imaging/rotate.h"

#include "base/lettercase.h"
#include "imaging/adjusting.h"
#include "imaging/course.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/upright.h"

namespace lumbrix {

namespace {

constexpr std::int32_t FreeAngle = -1;
constexpr std::int32_t FlipX = 4;

bool IsFlipWord(const std::string& word) { return word == "H" || word == "V" || word == "HV" || word == "VH"; }

// A flip upside down is a half turn with a mirror; both flips at once are a half turn.
std::int32_t FlipCode(const std::string& word) {
    if (word == "H") {
        return FlipX;
    }
    if (word == "V") {
        return FlipX + 2;
    }
    return 2;
}

} // namespace

std::int32_t RotateFlipCode(std::int32_t angle, const std::string& flip) {
    if (angle != 0 && angle != 90 && angle != 180 && angle != 270) {
        return FreeAngle;
    }
    const std::int32_t quarterTurns = angle / 90;
    const std::string word = UpperCase(flip);
    if (word.empty()) {
        return quarterTurns;
    }
    if (!IsFlipWord(word)) {
        return 0;
    }
    // The lower two bits count quarter turns, the third mirrors; turning on never changes the mirror.
    const std::int32_t code = FlipCode(word);
    return (code & FlipX) | ((code + quarterTurns) & 3);
}

Outcome Rotate(const RotateOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    const std::int32_t code = RotateFlipCode(order.angle, order.flip);
    const bool isKnown = code != FreeAngle && (order.flip.empty() || IsFlipWord(UpperCase(order.flip)));
    if (!course.TakeFormat(order.mimeWord)) {
        return outcome;
    }
    if (!isKnown && !course.IsEstablished()) {
        course.Fail(Step::Names, InvalidParameter);
        return outcome;
    }
    if (!course.Begin(order.destination)) {
        return outcome;
    }
    OwnedImage clone; // goes behind its source
    OwnedImage image;
    if (!course.Load(order.source, image) && !course.IsEstablished()) {
        return outcome;
    }
    if (!Adjust(course, image.Get())) {
        return outcome;
    }
    if (!course.IsEstablished() && course.Measure(image.Get())) {
        outcome.result = TurnedSize(outcome.source, code);
    }
    Clsid encoder;
    const bool isTurned = course.Take(Step::Turn, GdipCloneImage(image.Get(), clone.Place())) &&
                          // As established a free angle goes the same way, and is refused there.
                          course.Take(Step::Turn, GdipImageRotateFlip(clone.Get(), code));
    if (isTurned && course.FindEncoder(order.mimeWord, encoder)) {
        CopyImageProperties(image.Get(), clone.Get());
        if (code != 0) {
            course.FitMetadataTo(clone.Get());
        }
        StripAsWanted(course, clone.Get());
        course.Watch(clone.Get(), static_cast<std::uint32_t>(outcome.result.height));
        course.Save(clone.Get(), order.destination, encoder);
    }
    course.LookForDamage(clone.Get());
    if (!clone) {
        clone.LeaveBehind();
    }
    return outcome;
}

StatusValue RotateImage(const std::string& source, const std::string& destination, std::int32_t angle,
                        const std::string& flip) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    const Outcome outcome = Rotate({source, destination, mimeWord, angle, flip}, AsEstablished);
    return outcome.end.step == Step::Names ? Refused : Done;
}

} // namespace lumbrix
