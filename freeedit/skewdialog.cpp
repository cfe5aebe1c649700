// The dialog in which three corners of the picture are typed.
#include "freeedit/skewdialog.h"

#include "freeedit/skewlayout.h"
#include "toolkit/dialog.h"

namespace lumbrix {

namespace {

using namespace skewdialog;

class SkewDialog : public Dialog {
  public:
    explicit SkewDialog(CornerTexts& corners) : Dialog(SkewDialogLayout), corners_(corners) {}

  private:
    void OnStart() override {
        for (std::size_t i = 0; i < corners_.size(); ++i) {
            SetText(CornerBoxes[i], corners_[i]);
        }
    }

    void OnCommand(int id, int notification) override {
        if (!IsClick(notification) || (id != AbortButton && id != SetButton)) {
            return;
        }
        if (id == SetButton) {
            for (std::size_t i = 0; i < corners_.size(); ++i) {
                corners_[i] = TextOf(CornerBoxes[i]);
            }
        }
        End();
    }

    void OnClose() override {}

    CornerTexts& corners_;
};

} // namespace

INT_PTR ShowSkewDialog(HWND parent, CornerTexts& corners) { return SkewDialog(corners).RunModal(parent); }

} // namespace lumbrix
