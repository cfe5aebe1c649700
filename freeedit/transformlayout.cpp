// How the bar of the Free Edit window is laid out in whatever size the window has.
#include "freeedit/transformlayout.h"

#include "base/numbers.h"

namespace lumbrix::transformwindow {

namespace {

constexpr const Control& RowOf(Id id) { return *FindRow(TransformWindowControls, id); }

constexpr int BarHeight = RowOf(BarLabel).height;

ControlPlace PlaceAt(Id id, int x, int y) { return {id, x, y, RowOf(id).width, RowOf(id).height}; }

} // namespace

// From the right: Save, stretch, rotation, Skew, and Draw close to it. The gap is the height of Save.
std::array<ControlPlace, 8> BarPlaces(PixelSize client) {
    constexpr const Control& save = RowOf(SaveLabel);
    constexpr const Control& text = RowOf(StretchLabel);
    constexpr const Control& skew = RowOf(SkewLabel);
    constexpr const Control& draw = RowOf(DrawLabel);
    constexpr int Gap = save.height;
    constexpr int SliderBlock = text.height + RowOf(StretchSlider).height;
    const int top = client.height - BarHeight;
    const auto middle = [&](int height) { return RoundToEven(top + (BarHeight - height) / 2.0L); };

    const int saveX = client.width - save.width - Gap;
    const int stretchX = saveX - text.width - Gap;
    const int rotationX = stretchX - text.width - Gap;
    const int skewX = rotationX - Gap - skew.width;
    const int textY = middle(SliderBlock);
    return {{{BarLabel, 0, top, client.width, BarHeight},
             PlaceAt(SaveLabel, saveX, middle(save.height)),
             PlaceAt(StretchLabel, stretchX, textY),
             PlaceAt(StretchSlider, stretchX, textY + text.height),
             PlaceAt(RotationLabel, rotationX, textY),
             PlaceAt(RotationSlider, rotationX, textY + text.height),
             PlaceAt(SkewLabel, skewX, middle(skew.height)),
             PlaceAt(DrawLabel, skewX - draw.width, middle(draw.height))}};
}

PixelSize CanvasSize(PixelSize client) { return {client.width, client.height - BarHeight}; }

} // namespace lumbrix::transformwindow
