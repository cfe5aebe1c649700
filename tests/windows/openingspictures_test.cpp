// The windows that work on pictures, opened and closed again and again.
#include "annotate/actions.h"
#include "annotate/annotatewindow.h"
#include "annotate/layout.h"
#include "draw/drawlayout.h"
#include "draw/drawwindow.h"
#include "freeedit/skewlayout.h"
#include "freeedit/transformlayout.h"
#include "freeedit/transformwindow.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/fakemessages.h"
#include "tests/windows/openings.h"

#include <commctrl.h>

namespace {

using namespace lumbrix;
using namespace tests;

void Notify(HWND window, int id, UINT code) {
    const NMHDR notification{GetDlgItem(window, id), static_cast<UINT_PTR>(id), code};
    Send(window, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&notification));
}

// Whether the mouse is at a place of a control; moves it there.
bool IsPointedAt(HWND control, int x, int y) {
    const POINT place = ScreenPointOf(control, {x, y});
    POINT cursor{};
    GetCursorPos(&cursor);
    const bool isThere = cursor.x == place.x && cursor.y == place.y;
    if (!isThere) {
        SetCursorPos(place.x, place.y);
    }
    return isThere;
}

// Notifies the window of something that the mouse has done at a place of the picture. An earlier move may take it away
// once more, so it has to have been there for a while.
Visit AtPlace(const char* caption, int x, int y, UINT code) {
    constexpr int WhileLooks = 5;
    return {caption, [=, looks = 0](HWND window) mutable {
                looks = IsPointedAt(GetDlgItem(window, annotatewindow::PictureControl), x, y) ? looks + 1 : 0;
                if (looks == WhileLooks) {
                    Notify(window, annotatewindow::PictureControl, code);
                }
                return looks == WhileLooks;
            }};
}

class PictureOpening : public Opening, private ActionWindows {
  protected:
    PictureOpening() {
        WriteBytes(folder_ / "source.bmp", MakeBmp(640, 480, [](int x, int y) {
                       return Rgb{static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7};
                   }));
        order_.sourceFile = Path("source.bmp");
        order_.target = Path("out.png");
    }

    PixelSize RefreshSizeLabel() override {
        PixelSize size;
        GetImageDimensions(order_.sourceFile.c_str(), &size.width, &size.height);
        return size;
    }
    void ShowAnnotateWindow(std::size_t stage, PixelSize size, const std::string& title) override {
        lumbrix::ShowAnnotateWindow(nullptr, annotating_, messages_, stage, size, title);
    }
    void ShowCropDimensions() override {}
    ActionWindows& Windows() { return *this; }

    void OpenFreeEdit() {
        messages_.begun = 0;
        ShowTransformWindow(nullptr, order_, freeEdit_, messages_);
    }
    bool IsLoaded() const { return messages_.begun > 0 && messages_.waits == 0; }

    FakeOrder order_;
    FakeMessages messages_;
    AnnotateState annotating_;
    FreeEditState freeEdit_;
    TextFont textFont_;
};

TEST_F(PictureOpening, Annotating) {
    const Visit write{"Annotate image", [](HWND window) {
                          return SetDlgItemTextA(window, annotatewindow::AnnotationBox, "by the lake") != 0;
                      }};
    const Growth growth = Measure(
        "annotate, with a text placed", [&] { RunAnnotateAction(order_, Windows(), annotating_); },
        [&] {
            return std::deque{write, AtPlace("Annotate image", 50, 50, NM_RELEASEDCAPTURE), Closing("Annotate image")};
        });
    EXPECT_TRUE(messages_.said.empty());
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.png"));
    ExpectNothing(growth);
}

TEST_F(PictureOpening, Cropping) {
    const Growth growth = Measure(
        "crop and cropped picture", [&] { RunCropAction(order_, Windows(), messages_, annotating_); },
        [&] {
            return std::deque{AtPlace("Crop image", 20, 30, NM_LDOWN),
                              AtPlace("Crop image", 120, 130, NM_RELEASEDCAPTURE), Closing("Cropped image")};
        });
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.png"));
    ExpectNothing(growth);
}

// The canvas comes with the picture, which a timer loads.
constexpr const char* FreeEditCaption = "Change your image";

void PressLabel(HWND window, int label) {
    RECT place{};
    GetWindowRect(GetDlgItem(window, label), &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    PostMessageA(window, WM_MOUSEMOVE, 0, MAKELPARAM(place.left + 5, place.top + 5));
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, 0);
}

TEST_F(PictureOpening, FreeEdit) {
    const auto save = [&](HWND window) {
        if (!IsLoaded()) {
            return false;
        }
        PressLabel(window, transformwindow::SaveLabel);
        return true;
    };
    const Growth growth = Measure(
        "Free Edit, with a save", [&] { OpenFreeEdit(); },
        [&] {
            const Visit close{FreeEditCaption, [&](HWND window) {
                                  if (messages_.begun < 2) {
                                      return false;
                                  }
                                  PostMessageA(window, WM_CLOSE, 0, 0);
                                  return true;
                              }};
            return std::deque{Visit{FreeEditCaption, save}, close};
        });
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.png"));
    ExpectNothing(growth);
}

void Stroke(HWND window) {
    const HWND canvas = GetDlgItem(window, drawwindow::DrawCanvas);
    Send(canvas, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 30));
    Send(canvas, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(120, 60));
    Send(canvas, WM_LBUTTONUP, 0, MAKELPARAM(120, 60));
}

// Each kind of tool once, undone and done again.
bool DrawAll(HWND window) {
    using namespace drawwindow;
    for (const int tool : {LineOption, FreehandOption, BeamsOption, RoundedBoxOption, OvalOption, FillAreaOption}) {
        Send(GetDlgItem(window, tool), BM_CLICK, 0, 0);
        Stroke(window);
    }
    Send(window, WM_COMMAND, UndoButton, 0);
    Send(window, WM_COMMAND, RedoButton, 0);
    Press(window, SaveButton);
    return true;
}

TEST_F(PictureOpening, Draw) {
    const std::string drawFile = Path("out2.bmp");
    const Growth growth = Measure(
        "Draw, with six tools, undo and redo",
        [&] {
            std::filesystem::copy_file(folder_ / "source.bmp", drawFile);
            EXPECT_TRUE(DrawWindow(nullptr, drawFile, textFont_, messages_));
        },
        [] {
            return std::deque{Visit{drawwindow::Caption, DrawAll}};
        });
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out3.bmp"));
    ExpectNothing(growth);
}

// The one window hides while the other is open.
TEST_F(PictureOpening, FreeEditWithItsOwnWindows) {
    const auto press = [&](int label) {
        return Visit{FreeEditCaption, [=, this](HWND window) {
                         if (!IsLoaded() || !IsWindowEnabled(window)) {
                             return false;
                         }
                         PressLabel(window, label);
                         return true;
                     }};
    };
    const Visit close{FreeEditCaption,
                      [](HWND window) { return IsWindowEnabled(window) && PostMessageA(window, WM_CLOSE, 0, 0); }};
    const Growth growth = Measure(
        "Free Edit, with skew dialog and Draw", [&] { OpenFreeEdit(); },
        [&] {
            return std::deque{press(transformwindow::SkewLabel), Pressing("Skewing", skewdialog::SetButton),
                              press(transformwindow::DrawLabel), Visit{drawwindow::Caption, DrawAll}, close};
        });
    ExpectNothing(growth);
}

} // namespace
