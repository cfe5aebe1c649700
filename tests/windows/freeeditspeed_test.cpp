// A photograph of 24 megapixels in the Free Edit window: how long the canvas takes to follow a slider.
#include "tests/windows/freeeditfixture.h"
#include "tests/windows/largebmp.h"
#include "tests/windows/timing.h"

#include <iostream>

namespace {

using namespace lumbrix;
using namespace tests;

using FreeEditSpeed = FreeEditTest;

// Far more than is aimed at, for other programs run beside a test; reading the file again would take thousands.
constexpr double MostCopies = 100;

TEST_F(FreeEditSpeed, CanvasFollowsTheSliders) {
    WriteBytes(program_.Folder() / "large.bmp", MakeLargeBmp([](int y, std::string& row) {
                   for (std::size_t x = 0; x < row.size(); ++x) {
                       row[x] = static_cast<char>(40 + (x / 7 + static_cast<std::size_t>(y) / 5) % 150);
                   }
               }));
    ASSERT_EQ(ConvertImageToJpeg(Path("large.bmp").c_str(), Path("large.jpg").c_str()), 0);
    const FreeEditWindows opened = BeginOpen(Path("large.jpg"), Path("out.png"));
    EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(200, 100)) != RGB(255, 255, 255); }));
    Settle(opened);
    const Milliseconds copy = TimeOfPlainCopy(opened.CanvasSize());
    const auto run = [&](int slider, int from, int to, int step) {
        std::vector<Milliseconds> times;
        for (int position = from; position <= to; position += step) {
            Send(opened.window.Item(slider), TBM_SETPOS, TRUE, position);
            times.push_back(TimeOf([&] { SendSlider(opened, slider, TB_THUMBTRACK); }));
        }
        return times;
    };
    std::cout << "  a canvas of " << opened.CanvasSize().cx << " by " << opened.CanvasSize().cy << ", a plain copy of "
              << copy << " ms\n";
    Report("rotation at 1.00", run(RotationSlider, -180, 180, 7), copy, MostCopies);
    Report("stretch at 180 degrees", run(StretchSlider, 0, 500, 10), copy, MostCopies);
    run(RotationSlider, -33, -33, 1);
    Report("stretch at -33 degrees", run(StretchSlider, 0, 500, 10), copy, MostCopies);
    run(RotationSlider, 0, 0, 1);
    Report("stretch at 0 degrees", run(StretchSlider, 0, 500, 10), copy, MostCopies);
    Close(opened);
}

} // namespace
