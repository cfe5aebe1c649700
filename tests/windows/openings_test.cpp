// Each window opened and closed again and again in one process, which then holds no more than before. Some openings are
// enough for objects; OPENINGS=1000 is for memory too.
#include "annotate/actions.h"
#include "annotate/annotatewindow.h"
#include "annotate/cropdimensions.h"
#include "annotate/dimensionslayout.h"
#include "annotate/fontchoice.h"
#include "annotate/layout.h"
#include "desktop/aboutbox.h"
#include "draw/drawlayout.h"
#include "draw/drawwindow.h"
#include "draw/textentry.h"
#include "draw/textentrylayout.h"
#include "freeedit/skewdialog.h"
#include "freeedit/skewlayout.h"
#include "freeedit/transformlayout.h"
#include "freeedit/transformwindow.h"
#include "imaging/exports/lumbrix.h"
#include "mainwindow/mainwindow.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/fakemessages.h"
#include "tests/support/resources.h"
#include "tests/windows/runningprogram.h"
#include "tests/windows/visitor.h"
#include "toolkit/browsefolder.h"
#include "toolkit/fontdialog.h"
#include "toolkit/messageboxes.h"
#include "toolkit/picker.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace lumbrix;
using namespace tests;

int Openings() {
    const char* asked = std::getenv("OPENINGS");
    return asked != nullptr ? std::atoi(asked) : 30;
}

struct Held {
    int gdiObjects = CountGdiObjects();
    int userObjects = CountUserObjects();
    int handles = CountHandles();
    std::int64_t bytes = CountPrivateBytes();
};

void Press(HWND window, int button) { PostMessageA(GetDlgItem(window, button), BM_CLICK, 0, 0); }

Visit Closing(const char* caption) {
    return {caption, [](HWND window) {
                PostMessageA(window, WM_CLOSE, 0, 0);
                return true;
            }};
}

Visit Pressing(const char* caption, int button) {
    return {caption, [button](HWND window) {
                Press(window, button);
                return true;
            }};
}

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

class Opening : public testing::Test, private ActionWindows {
  protected:
    static void SetUpTestSuite() { LimitTests(TestLimitMs + static_cast<DWORD>(Openings()) * 3000); }

    Opening() {
        CoInitialize(nullptr);
        LoadImagingLibrary();
        WriteBytes(folder_ / "source.bmp", MakeBmp(640, 480, [](int x, int y) {
                       return Rgb{static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7};
                   }));
        order_.sourceFile = Path("source.bmp");
        order_.target = Path("out.png");
    }
    ~Opening() override {
        UnloadImagingLibrary();
        CoUninitialize();
    }

    std::string Path(const char* name) const { return (folder_ / name).string(); }

    // What the process holds behind some openings, and behind many more.
    void Measure(const std::function<void()>& open, const std::function<std::deque<Visit>()>& visits) {
        const auto openTimes = [&](int times) {
            for (int i = 0; i < times; ++i) {
                const Visitor visitor(visits());
                open();
                ASSERT_TRUE(visitor.IsDone());
            }
        };
        const int count = Openings();
        ASSERT_NO_FATAL_FAILURE(openTimes(std::max(10, count / 10)));
        before_ = Held();
        ASSERT_NO_FATAL_FAILURE(openTimes(count));
        after_ = Held();
        std::printf("| %s | %d | %d / %d | %d / %d | %d / %d | %lld / %lld |\n",
                    testing::UnitTest::GetInstance()->current_test_info()->name(), count, before_.gdiObjects,
                    after_.gdiObjects, before_.userObjects, after_.userObjects, before_.handles, after_.handles,
                    static_cast<long long>(before_.bytes / 1024), static_cast<long long>(after_.bytes / 1024));
        std::fflush(stdout);
    }

    void ExpectNothingGrown() const {
        EXPECT_LE(after_.gdiObjects, before_.gdiObjects);
        EXPECT_LE(after_.userObjects, before_.userObjects);
        EXPECT_LE(after_.handles, before_.handles);
        EXPECT_LE(after_.bytes, before_.bytes + 512 * 1024);
    }

    PixelSize RefreshSizeLabel() override {
        PixelSize size;
        GetImageDimensions(order_.sourceFile.c_str(), &size.width, &size.height);
        return size;
    }
    void ShowAnnotateWindow(std::size_t stage, PixelSize size, const std::string& title) override {
        lumbrix::ShowAnnotateWindow(nullptr, annotating_, messages_, stage, size, title);
    }
    void ShowCropDimensions() override { lumbrix::ShowCropDimensions(nullptr, annotating_.cropRectangle); }
    ActionWindows& Windows() { return *this; }

    TemporaryFolder folder_;
    TemporaryFilesIn temporaryFiles_{folder_.Path()};
    FakeOrder order_;
    FakeMessages messages_;
    AnnotateState annotating_;
    FreeEditState freeEdit_;
    TextFont textFont_;
    Held before_;
    Held after_;
};

TEST_F(Opening, MainWindow) {
    WriteBytes(ShortcutOnDesktop(), "of another start");
    Measure([] { BuildMainWindow(nullptr); }, [] { return std::deque{Closing("Lumbrix")}; });
    ExpectNothingGrown();
}

TEST_F(Opening, AboutBox) {
    Measure([] { ShowAbout(nullptr, {}); }, [] { return std::deque{Closing("About Lumbrix...")}; });
    ExpectNothingGrown();
}

TEST_F(Opening, MessageBox) {
    MessageBoxes boxes;
    Measure([&] { boxes.Show("All is well.", "Lumbrix"); }, [] { return std::deque{Pressing("Lumbrix", IDOK)}; });
    ExpectNothingGrown();
}

TEST_F(Opening, FilePicker) {
    constexpr int PreviewPane = 346;
    SetCurrentDirectoryA(folder_.Path().string().c_str());
    const auto select = [](HWND window) {
        const HWND list = FindBelow(window, "SysListView32");
        if (GetDlgItem(window, PreviewPane) == nullptr || list == nullptr || Send(list, LVM_GETITEMCOUNT, 0, 0) == 0) {
            return false;
        }
        LVITEMA selected{};
        selected.stateMask = selected.state = LVIS_SELECTED | LVIS_FOCUSED;
        Send(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&selected));
        Press(window, IDCANCEL);
        return true;
    };
    Measure([] { PickImageFile(nullptr, "Select the image", PickMode::ExistingFile); },
            [&] {
                return std::deque{Visit{"Select the image", select}};
            });
    ExpectNothingGrown();
}

TEST_F(Opening, BareFilePicker) {
    SetCurrentDirectoryA(folder_.Path().string().c_str());
    const auto open = [] {
        char name[MAX_PATH] = "";
        OPENFILENAMEA dialog{};
        dialog.lStructSize = sizeof dialog;
        dialog.lpstrFile = name;
        dialog.nMaxFile = sizeof name;
        dialog.lpstrTitle = "Bare";
        dialog.Flags = OFN_EXPLORER;
        GetOpenFileNameA(&dialog);
    };
    Measure(open, [] { return std::deque{Pressing("Bare", IDCANCEL)}; });
}

TEST_F(Opening, FolderDialog) {
    Measure([] { BrowseForFolder(nullptr, "prompt", "caption"); },
            [] { return std::deque{Pressing("caption", IDCANCEL)}; });
    ExpectNothingGrown();
}

TEST_F(Opening, FontDialog) {
    Measure([] { ChooseFontOf(nullptr, FontKinds::All); }, [] { return std::deque{Pressing("Font", IDCANCEL)}; });
    ExpectNothingGrown();
}

TEST_F(Opening, CropDimensions) {
    PixelRectangle rectangle;
    Measure([&] { lumbrix::ShowCropDimensions(nullptr, rectangle); },
            [] { return std::deque{Pressing("Crop dimensions", cropdimensions::CropOkButton)}; });
    ExpectNothingGrown();
}

TEST_F(Opening, Annotating) {
    const Visit write{"Annotate image", [](HWND window) {
                          return SetDlgItemTextA(window, annotatewindow::AnnotationBox, "by the lake") != 0;
                      }};
    Measure(
        [&] { RunAnnotateAction(order_, Windows(), annotating_); },
        [&] {
            return std::deque{write, AtPlace("Annotate image", 50, 50, NM_RELEASEDCAPTURE), Closing("Annotate image")};
        });
    EXPECT_TRUE(messages_.said.empty());
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.png"));
    ExpectNothingGrown();
}

TEST_F(Opening, Cropping) {
    Measure([&] { RunCropAction(order_, Windows(), messages_, annotating_); },
            [&] {
                return std::deque{AtPlace("Crop image", 20, 30, NM_LDOWN),
                                  AtPlace("Crop image", 120, 130, NM_RELEASEDCAPTURE), Closing("Cropped image")};
            });
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.png"));
    ExpectNothingGrown();
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

TEST_F(Opening, FreeEdit) {
    const auto save = [&](HWND window) {
        if (messages_.begun == 0 || messages_.waits != 0) {
            return false;
        }
        PressLabel(window, transformwindow::SaveLabel);
        return true;
    };
    Measure(
        [&] {
            messages_.begun = 0;
            ShowTransformWindow(nullptr, order_, freeEdit_, messages_);
        },
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
    ExpectNothingGrown();
}

TEST_F(Opening, Skewing) {
    CornerTexts corners;
    corners.fill("0");
    Measure([&] { ShowSkewDialog(nullptr, corners); },
            [] { return std::deque{Pressing("Skewing", skewdialog::SetButton)}; });
    ExpectNothingGrown();
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

TEST_F(Opening, Draw) {
    const std::string drawFile = Path("out2.bmp");
    Measure(
        [&] {
            std::filesystem::copy_file(folder_ / "source.bmp", drawFile);
            EXPECT_TRUE(DrawWindow(nullptr, drawFile, textFont_, messages_));
        },
        [] {
            return std::deque{Visit{drawwindow::Caption, DrawAll}};
        });
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out3.bmp"));
    ExpectNothingGrown();
}

TEST_F(Opening, TextEntry) {
    OwnedFont drawnWith;
    Measure(
        [&] {
            std::string text;
            ShowTextEntry(
                nullptr, textFont_, 0, [&](OwnedFont font) { drawnWith = std::move(font); }, text);
            EXPECT_EQ(text, "by the lake");
        },
        [] {
            const Visit change{"Enter Text", [](HWND window) {
                                   SetDlgItemTextA(window, textentry::TextBox, "by the lake");
                                   Press(window, textentry::ChangeFontButton);
                                   return true;
                               }};
            return std::deque{change, Pressing("Font", IDOK), Pressing("Enter Text", textentry::ExitButton)};
        });
    ExpectNothingGrown();
}

} // namespace
