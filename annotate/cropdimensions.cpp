// The dialog that takes a crop rectangle as four numbers.
#include "annotate/cropdimensions.h"

#include "annotate/dimensionslayout.h"
#include "annotate/typedrectangle.h"
#include "toolkit/dialog.h"

namespace lumbrix {

namespace {

using namespace cropdimensions;

class CropDimensions : public Dialog {
  public:
    explicit CropDimensions(PixelRectangle& rectangle) : Dialog(CropDimensionsLayout), rectangle_(rectangle) {}

  private:
    void OnCommand(int id, int notification) override {
        if (id == CropOkButton && IsClick(notification)) {
            rectangle_ =
                TypedRectangle(TextOf(CropLeftBox), TextOf(CropTopBox), TextOf(CropWidthBox), TextOf(CropHeightBox));
            End();
        }
    }

    void OnClose() override {}

    PixelRectangle& rectangle_;
};

} // namespace

INT_PTR ShowCropDimensions(HWND parent, PixelRectangle& rectangle) {
    return CropDimensions(rectangle).RunModal(parent);
}

} // namespace lumbrix
