// The action of the main window that turns pictures.
#include "mainwindow/actions.h"

#include "imaging/exports/lumbrix.h"
#include "platform/files.h"

namespace lumbrix {

void RunRotateAction(const Order& order, std::int32_t angle, const std::string& flip, Messages& messages) {
    const std::string source = order.SourceFile();
    const std::string target = order.Target();
    if (source.empty() || target.empty()) {
        return;
    }
    {
        const WaitCursor wait(messages);
        RotateImage(source.c_str(), target.c_str(), angle, flip.c_str());
    }
    messages.Show(FileExists(target) ? "Done" : "Faliure", ProgramTitle);
}

} // namespace lumbrix
