// A real mouse: presses and moves come from the display itself, so that they go wherever a person's would go.
#pragma once

#include <windows.h>

namespace tests {

// Each comes back when the desktop has seen it; what a program then does about it must be waited for.
void MoveMouse(POINT screen);
void PressMouse();
void ReleaseMouse();

// The same after a press that ends its program: with that the system may lose the release, until the next press.
void ReleaseMouseOverNothing();

// Two clicks on one place in quick succession are a double click.
void ClickAt(POINT screen);

// Presses, moves in steps and releases.
void DragMouse(POINT from, POINT to);

} // namespace tests
