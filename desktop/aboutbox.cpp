// The box that tells about the program.
#include "desktop/aboutbox.h"

#include "desktop/aboutlayout.h"
#include "desktop/aboutpress.h"
#include "desktop/systemlauncher.h"
#include "toolkit/browsefolder.h"
#include "toolkit/dialog.h"
#include "toolkit/hover.h"
#include "toolkit/mousepoint.h"

namespace lumbrix {

namespace {

using namespace aboutbox;

class AboutBox : public Dialog {
  public:
    explicit AboutBox(RemovalSteps removal) : Dialog(AboutBoxLayout), removal_(std::move(removal)) {
        removal_.endAboutBox = [this] { End(); };
    }

  private:
    void OnStart() override { SetWindowIconFromModule(Handle()); }

    // The lines let the mouse through, so the box sees it all.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM /*wordParameter*/, LPARAM longParameter) override {
        if (message == WM_MOUSEMOVE) {
            hover_.MoveTo(Handle(), SignedMousePoint(static_cast<std::uint32_t>(longParameter)));
        } else if (message == WM_LBUTTONDOWN) {
            SystemLauncher launcher(Handle());
            ActOnPress(hover_.Control(), launcher, removal_);
        }
        return std::nullopt;
    }

    Hover hover_{{AboutBoxLinks.begin(), AboutBoxLinks.end()}};
    RemovalSteps removal_;
};

} // namespace

void ShowAbout(HWND parent, RemovalSteps removal) { AboutBox(std::move(removal)).RunModal(parent); }

} // namespace lumbrix
