// The annotate and crop window of the running program in its three modes, held against its table.
#include "tests/windows/annotatefixture.h"
#include "tests/windows/tabledwindow.h"

namespace {

using namespace lumbrix;
using namespace tests;

std::uint32_t AsNumber(const void* handle) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

class AnnotateLayout : public PictureWindowTest {
  protected:
    AnnotateLayout() { WritePlainPng(Path("source.png"), 300, 200, White); }

    OpenWindow OpenMode(EditMode mode) const {
        const OpenWindow window =
            Open(mode == EditMode::Annotate ? AnnotateButton : CropButton, Path("source.png"), Path("target.png"));
        if (mode != EditMode::Cropped) {
            return window;
        }
        DragMouse(On(window, 20, 10), On(window, 120, 90));
        window.WaitUntilGone();
        return Opened(program_.Further());
    }

    // The table with the label for the help as the mode has it.
    static std::vector<Control> ControlsIn(EditMode mode) {
        std::vector<Control> controls(std::begin(AnnotateWindowControls), std::end(AnnotateWindowControls));
        const AnnotateModeLayout& layout = LayoutOf(mode);
        controls.back().caption = layout.helpText;
        controls.back().y = layout.helpY;
        controls.back().height = layout.helpHeight;
        if (mode == EditMode::Crop) { // Keep lies below the help
            const auto keep = std::find_if(controls.begin(), controls.end(),
                                           [](const Control& control) { return control.id == KeepCheck; });
            std::rotate(keep, keep + 1, controls.end());
        }
        return controls;
    }

    // The colours that a control is drawn with: of the text and behind it.
    static std::pair<std::uint32_t, std::uint32_t> ColorsOf(const OpenWindow& window, int id) {
        const HWND item = window.Item(id);
        const std::uint32_t context = window.CallInside("user32.dll", "GetDC", {AsNumber(item)});
        window.CallInside("user32.dll", "SendMessageA",
                          {AsNumber(window.Window()), WM_CTLCOLORSTATIC, context, AsNumber(item)});
        return {window.CallInside("gdi32.dll", "GetTextColor", {context}),
                window.CallInside("gdi32.dll", "GetBkColor", {context})};
    }
};

class EachMode : public AnnotateLayout, public testing::WithParamInterface<EditMode> {};

TEST_P(EachMode, EveryControlIsAsTabled) {
    const OpenWindow window = OpenMode(GetParam());
    TabledWindow(window).ExpectControls(ControlsIn(GetParam()));
    CloseAndWait(window);
}

TEST_P(EachMode, OnlyWhatItNeedsIsShown) {
    const OpenWindow window = OpenMode(GetParam());
    const auto& hidden = LayoutOf(GetParam()).hidden;
    for (const Control& control : AnnotateWindowControls) {
        const bool isHidden = std::find(hidden.begin(), hidden.end(), control.id) != hidden.end();
        EXPECT_EQ(window.IsVisible(control.id), !isHidden) << control.id;
    }
    CloseAndWait(window);
}

TEST_P(EachMode, FrameIsFixedAndStandsAtTheTopLeft) {
    constexpr const char* Titles[] = {"Annotate image", "Crop image", "Cropped image"};
    const OpenWindow window = OpenMode(GetParam());
    EXPECT_EQ(WindowText(window.Window()), Titles[static_cast<std::size_t>(GetParam())]);
    RECT frame{};
    GetWindowRect(window.Window(), &frame);
    EXPECT_EQ(frame.left, 0);
    EXPECT_EQ(frame.top, 0);
    TabledWindow(window).ExpectSize(427, GetParam() == EditMode::Cropped ? 255 : 295);
    const auto style = static_cast<DWORD>(GetWindowLongA(window.Window(), GWL_STYLE));
    EXPECT_EQ(style & (WS_CAPTION | WS_SYSMENU), static_cast<DWORD>(WS_CAPTION | WS_SYSMENU));
    EXPECT_EQ(style & (WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX), 0u);
    CloseAndWait(window);
}

std::string NameOfMode(const testing::TestParamInfo<EditMode>& info) {
    constexpr const char* Names[] = {"Annotate", "Crop", "Cropped"};
    return Names[static_cast<std::size_t>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(Annotate, EachMode, testing::Values(EditMode::Annotate, EditMode::Crop, EditMode::Cropped),
                         NameOfMode);

TEST_F(AnnotateLayout, FontsAreArialOfTenPointsOrTheSystems) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    const HDC screen = GetDC(nullptr);
    const int height = FontHeight(10, GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    const TabledWindow seen(window);
    for (const int id : {AnnotationLabel, FontButton, StampButton, KeepCheck, HelpButton, HelpLabel}) {
        const LOGFONTA font = seen.FontOf(id);
        EXPECT_STREQ(font.lfFaceName, "Arial") << id;
        EXPECT_EQ(font.lfHeight, height) << id;
        EXPECT_EQ(font.lfWeight, 400) << id;
    }
    for (const int id : {AnnotationBox, FontColorButton}) {
        EXPECT_STREQ(seen.FontOf(id).lfFaceName, "MS Sans Serif") << id;
    }
    CloseAndWait(window);
}

TEST_F(AnnotateLayout, ColorsAreAsTabled) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    EXPECT_EQ(ColorsOf(window, AnnotationLabel), std::pair(lumbrix::Black, Cyan));
    EXPECT_EQ(ColorsOf(window, HelpLabel), std::pair(lumbrix::Red, Cyan));
    EXPECT_EQ(ColorsOf(window, KeepCheck), std::pair(std::uint32_t{GetSysColor(COLOR_WINDOWTEXT)}, Cyan));
    RECT client{};
    GetClientRect(window.Window(), &client);
    EXPECT_EQ(PixelAt(ScreenPointOf(window.Window(), {client.right - 2, client.bottom - 2})), Cyan);
    CloseAndWait(window);
}

TEST_F(AnnotateLayout, PictureControlIsAListOfIconsThatTheKeyboardPassesOver) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    const LONG style = GetWindowLongA(window.Item(PictureControl), GWL_STYLE);
    EXPECT_EQ(style & 3, 0); // icons
    EXPECT_EQ(style & WS_TABSTOP, 0);
    EXPECT_EQ(window.FocusedId(), AnnotationBox);
    CloseAndWait(window);
}

TEST_F(AnnotateLayout, PictureStandsAtTheTopLeftInItsOwnSize) {
    WritePlainPng(Path("source.png"), 300, 200, tests::Black);
    const OpenWindow black = OpenMode(EditMode::Annotate);
    EXPECT_TRUE(WaitFor([&] { return PixelAt(On(black, 0, 0)) == 0; }));
    EXPECT_EQ(PixelAt(On(black, 299, 199)), 0u);
    EXPECT_EQ(PixelAt(On(black, 300, 100)), RGB(255, 255, 255));
    EXPECT_EQ(PixelAt(On(black, 100, 200)), RGB(255, 255, 255));
    CloseAndWait(black);
}

TEST_F(AnnotateLayout, KeyboardIsAtThePictureWhereThereIsNoText) {
    for (const EditMode mode : {EditMode::Crop, EditMode::Cropped}) {
        const OpenWindow window = OpenMode(mode);
        EXPECT_EQ(window.FocusedId(), PictureControl) << static_cast<int>(mode);
        PressKey(VK_SPACE);
        PressKey(VK_TAB); // worked off behind it
        EXPECT_TRUE(WaitFor([&] { return window.FocusedId() == KeepCheck; })) << static_cast<int>(mode);
        EXPECT_TRUE(IsWindow(window.Window())) << static_cast<int>(mode);
        CloseAndWait(window);
    }
}

TEST_F(AnnotateLayout, EscapeAndEnterLeaveItOpen) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    PressKey(VK_ESCAPE);
    PressKey(VK_RETURN);
    PressKey('7');
    EXPECT_TRUE(WaitFor([&] { return window.Text(AnnotationBox) == "7"; }));
    EXPECT_TRUE(window.IsQuiet());
    CloseAndWait(window);
}

} // namespace
