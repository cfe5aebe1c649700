// Turns an image file by right angles and flips it.
#include "imaging/rotate.h"

#include "base/lettercase.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/session.h"

namespace lumbrix {

namespace {

constexpr std::int32_t FreeAngle = -1;
constexpr std::int32_t FlipX = 4;

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
    if (word != "H" && word != "V" && word != "HV" && word != "VH") {
        return 0;
    }
    // The lower two bits count quarter turns, the third mirrors; turning on never changes the mirror.
    const std::int32_t code = FlipCode(word);
    return (code & FlipX) | ((code + quarterTurns) & 3);
}

StatusValue RotateImage(const std::string& source, const std::string& destination, std::int32_t angle,
                        const std::string& flip) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    if (mimeWord.empty()) {
        return Refused;
    }
    const std::int32_t code = RotateFlipCode(angle, flip);
    const StatusValue token = StartImagingSession();
    ImageHandle image = nullptr;
    LoadImageFile(source, &image);
    ImageHandle clone = nullptr;
    GdipCloneImage(image, &clone);
    GdipImageRotateFlip(clone, code); // a free angle goes the same way, and is refused there
    const Clsid encoder = ClsidFromText(FindEncoderClsid(mimeWord));
    CopyImageProperties(image, clone);
    SaveImageFile(clone, destination, encoder);
    for (const ImageHandle made : {image, clone}) {
        if (made != nullptr) {
            DisposeImageHandle(made);
        }
    }
    EndImagingSession(token);
    return Done;
}

} // namespace lumbrix
