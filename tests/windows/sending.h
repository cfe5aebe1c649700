// Messages to windows of other processes, none of which is waited for without end.
#pragma once

#include "tests/windows/desktop.h"

namespace tests {

// Sends a message and gives back its answer. A window that does not answer in time is told as a failure, with what was
// sent to it, and gives 0, as one that is gone does.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, DWORD patienceMs = PatienceMs);

// What waits without end is not to be used by mistake.
#pragma GCC poison SendMessageA

} // namespace tests
