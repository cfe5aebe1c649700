// How long things take on the screen, in plain copies of as many pixels.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <vector>

namespace tests {

using Milliseconds = double;

// The time that this part of them, from 0 to 1, does not exceed.
inline Milliseconds QuantileOf(std::vector<Milliseconds> times, double part) {
    const auto place = static_cast<std::ptrdiff_t>(part * static_cast<double>(times.size()));
    std::nth_element(times.begin(), times.begin() + place, times.end());
    return times[static_cast<std::size_t>(place)];
}

inline Milliseconds MedianOf(const std::vector<Milliseconds>& times) { return QuantileOf(times, 0.5); }

inline Milliseconds TimeOf(const std::function<void()>& work) {
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    work();
    QueryPerformanceCounter(&end);
    return 1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// A copy of a picture off the screen to a window, both as large as the canvas.
inline Milliseconds TimeOfPlainCopy(SIZE size) {
    const HWND window = CreateWindowExA(WS_EX_TOPMOST | WS_EX_NOACTIVATE, "Static", "", WS_POPUP | WS_VISIBLE, 0, 0,
                                        size.cx, size.cy, nullptr, nullptr, nullptr, nullptr);
    const HDC screen = GetDC(window);
    const HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    std::vector<Milliseconds> times;
    for (int i = 0; i < 31; ++i) {
        times.push_back(TimeOf([&] {
            BitBlt(screen, 0, 0, size.cx, size.cy, memory, 0, 0, SRCCOPY);
            GdiFlush();
        }));
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, screen);
    DestroyWindow(window);
    return MedianOf(times);
}

// Tells median and worst, and expects the quickest tenth to stay below so many copies: what other programs take away is
// in the slower ones.
inline void Report(const char* what, const std::vector<Milliseconds>& times, Milliseconds copy, double mostCopies) {
    const Milliseconds worst = *std::max_element(times.begin(), times.end());
    const Milliseconds median = MedianOf(times);
    std::cout << "  " << what << ": median " << median << " ms, worst " << worst << " ms; in plain copies "
              << median / copy << " and " << worst / copy << "\n";
    EXPECT_LT(QuantileOf(times, 0.1), mostCopies * copy) << what;
}

} // namespace tests
