// The whole help of the program: a text, opened with the system's viewer.
#include "desktop/helpfile.h"

#include "desktop/helptext.h"
#include "platform/errors.h"

#include <windows.h>

#include <shellapi.h>

namespace lumbrix {

void WriteHelpFile() {
    trap([] { ShellExecuteA(nullptr, "open", WriteHelpText().c_str(), "", "", SW_SHOWNORMAL); });
}

} // namespace lumbrix
