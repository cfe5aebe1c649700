// Measures how long the paint window's canvas takes to follow a freehand stroke, and to undo and redo, on 1280 by 1024
// pixels: in plain copies of the canvas to its window.
#include "draw/paintcanvas.h"
#include "draw/tools.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

using namespace lumbrix;

constexpr PixelSize Size{1280, 1024};
constexpr int Runs = 501;

struct Timing {
    double median;
    double worst;
};

template <typename Work> Timing MillisecondsOf(const Work& work) {
    std::vector<double> times;
    for (int i = 0; i < Runs; ++i) {
        const auto before = std::chrono::steady_clock::now();
        work(i);
        GdiFlush();
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - before).count());
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

Timing PlainCopies(HWND control) {
    const OffscreenPicture picture(Size, 32, OffscreenPicture::FirstRow::Top);
    const WindowContext context(control);
    return MillisecondsOf(
        [&](int) { BitBlt(context.Get(), 0, 0, Size.width, Size.height, picture.Context(), 0, 0, SRCCOPY); });
}

void Report(const char* name, const Timing& timing, double copy) {
    std::printf("%-34s median %7.3f ms, worst %7.3f ms; in copies %6.2f and %6.2f\n", name, timing.median, timing.worst,
                timing.median / copy, timing.worst / copy);
}

} // namespace

int main() {
    const HWND control = CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, Size.width,
                                         Size.height, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    DrawingState state;
    state.currentTool = drawwindow::FreehandOption;
    PaintCanvas canvas(state, {[](const std::string&) {}, [] {}, [](std::string&) {}});
    canvas.TakePlace(control);

    const Timing copies = PlainCopies(control);
    std::printf("plain copy of %d by %d pixels: %.3f ms\n", Size.width, Size.height, copies.median);
    const auto send = [&](UINT message, int x, int y) { SendMessageA(control, message, MK_LBUTTON, MAKELPARAM(x, y)); };
    Report("repaint", MillisecondsOf([&](int) { canvas.Repaint(); }), copies.median);
    send(WM_LBUTTONDOWN, 600, 500);
    Report("move of a freehand stroke",
           MillisecondsOf([&](int i) { send(WM_MOUSEMOVE, 400 + (i * 37) % 400, 400 + (i * 53) % 300); }),
           copies.median);
    send(WM_LBUTTONUP, 0, 0);
    Report("undo and redo by turns", MillisecondsOf([&](int i) { i % 2 == 0 ? canvas.Undo() : canvas.Redo(); }),
           copies.median);
    Report("press with its snapshot", MillisecondsOf([&](int) {
               send(WM_LBUTTONDOWN, 600, 500);
               send(WM_LBUTTONUP, 0, 0);
           }),
           copies.median);
    canvas.LeaveControl();
    DestroyWindow(control);
    return 0;
}
