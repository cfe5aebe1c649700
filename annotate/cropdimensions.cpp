// The dialog that takes a crop rectangle as four numbers.
#include "annotate/cropdimensions.h"

#include "annotate/dimensionslayout.h"
#include "annotate/typedrectangle.h"
#include "toolkit/dialog.h"

namespace lumbrix {

namespace {

class CropDimensions : public Dialog {
  public:
    CropDimensions() : Dialog(CropDimensionsLayout) {}

  private:
    void OnCommand(int id, int notification) override {
        if (id == CropOkButton && IsClick(notification)) {
            CropRect =
                TypedRectangle(TextOf(CropLeftBox), TextOf(CropTopBox), TextOf(CropWidthBox), TextOf(CropHeightBox));
            EndDialog(Handle(), 0);
        }
    }

    void OnClose() override {}
};

} // namespace

INT_PTR ShowCropDimensions(HWND parent) { return CropDimensions().RunModal(parent); }

} // namespace lumbrix
