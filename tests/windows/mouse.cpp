// A real mouse: presses and moves come from the display itself, so that they go wherever a person's would go.
#include "tests/windows/mouse.h"

#include "tests/windows/deadline.h"
#include "tests/windows/desktop.h"

#include <gtest/gtest.h>

#include <vector>

namespace tests {

namespace {

constexpr DWORD GesturePatienceMs = 5000;
constexpr DWORD BetweenMovesMs = 10;

bool IsUnderWine() { return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr; }

// Mouse events that are made inside Wine's desktop are lost now and then, so there they are made in the display around
// it, which has the same coordinates.
void TellDisplay(const std::string& commands) {
    const Waiting waiting("xdotool to start");
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::string command = "Z:\\usr\\bin\\xdotool" + commands;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        ADD_FAILURE() << "xdotool is not started, error " << GetLastError();
    }
    // A program of the system around Wine has no handles here.
}

POINT Position() {
    POINT position{};
    GetCursorPos(&position);
    return position;
}

bool IsAt(POINT screen) {
    const POINT position = Position();
    return position.x == screen.x && position.y == screen.y;
}

void MoveThrough(const std::vector<POINT>& places) {
    std::string commands;
    for (const POINT place : places) {
        if (IsUnderWine()) {
            commands += " mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " sleep " +
                        std::to_string(BetweenMovesMs / 1000.0);
        } else {
            SetCursorPos(place.x, place.y);
            Sleep(BetweenMovesMs);
        }
    }
    if (IsUnderWine()) {
        TellDisplay(commands);
    }
    const POINT last = places.back();
    EXPECT_TRUE(WaitFor([&] { return IsAt(last); }, GesturePatienceMs))
        << "the mouse is at " << Position().x << "," << Position().y << ", not at " << last.x << "," << last.y;
}

void SendButton(bool isDown) {
    if (IsUnderWine()) {
        TellDisplay(isDown ? " mousedown 1" : " mouseup 1");
    } else {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = isDown ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
        SendInput(1, &input, sizeof input);
    }
}

void SetButton(bool isDown) {
    SendButton(isDown);
    EXPECT_TRUE(WaitFor([&] { return (GetAsyncKeyState(VK_LBUTTON) < 0) == isDown; }, GesturePatienceMs))
        << "the mouse button is " << (isDown ? "not pressed" : "still pressed");
}

} // namespace

void MoveMouse(POINT screen) {
    // A move to where it is would show no effect to wait for, and could come in between what follows.
    if (!IsAt(screen)) {
        MoveThrough({screen});
    }
}

void PressMouse() { SetButton(true); }

void ReleaseMouse() { SetButton(false); }

void ReleaseMouseOverNothing() { SendButton(false); }

void ClickAt(POINT screen) {
    MoveMouse(screen);
    PressMouse();
    ReleaseMouse();
}

void DragMouse(POINT from, POINT to) {
    constexpr int Steps = 8; // fewer are taken for a jump by what follows the mouse
    std::vector<POINT> places;
    for (int step = 1; step <= Steps; ++step) {
        places.push_back({from.x + (to.x - from.x) * step / Steps, from.y + (to.y - from.y) * step / Steps});
    }
    MoveMouse(from);
    PressMouse();
    MoveThrough(places);
    ReleaseMouse();
}

} // namespace tests
