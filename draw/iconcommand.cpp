// Makes an icon where there is no window, and nobody who reads a message.
#include "draw/iconcommand.h"

#include "draw/iconbitmap.h"
#include "draw/iconmaker.h"
#include "draw/iconrules.h"
#include "platform/errors.h"
#include "platform/filefacts.h"
#include "platform/files.h"
#include "toolkit/handles.h"

namespace lumbrix {

namespace {

using OwnedWindow = Owned<HWND, DestroyWindow>;

// Keeps what is said.
class KeptMessages : public Messages {
  public:
    void Show(const std::string& text, const std::string& /*title*/) override { said_ = text; }
    void ShowTechnical(const std::string& text) override { said_ = text; }
    bool Confirm(const std::string& /*text*/, const std::string& /*title*/) override { return false; }
    void BeginWaiting() override {}
    void EndWaiting() override {}

    const std::string& Said() const { return said_; }

  private:
    std::string said_;
};

// Needs no screen.
OwnedWindow HiddenWindow() {
    return OwnedWindow(CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                       GetModuleHandleA(nullptr), nullptr));
}

std::string Unread(const std::string& path, const std::string& cause) { return "cannot read " + path + ": " + cause; }

std::optional<std::string> WhyUnfit(const std::string& path) {
    switch (KindOfFile(path)) {
    case FileKind::Missing:
        return Unread(path, "there is no such file");
    case FileKind::Folder:
        return Unread(path, "it is a folder");
    case FileKind::Impossible:
        return Unread(path, "no file can have this name");
    default:
        break;
    }
    const std::string start = StartOfFile(path);
    if (!IsBitmapFile(start)) {
        return Unread(path, "it is not a bitmap");
    }
    // The system may take what is missing for pixels all the same.
    if (!HasAllPixels(start, FileSize(path).value_or(0))) {
        return Unread(path, "it is damaged: pixels are missing");
    }
    if (IsSameFile(path, IconPath(path))) {
        return "cannot write " + path + ": it is the source itself";
    }
    return std::nullopt;
}

std::optional<std::string> WhyNotMade(const std::string& path) {
    const OwnedWindow window = HiddenWindow();
    KeptMessages messages;
    MakeIcon(window.Get(), path, messages);
    if (messages.Said() == PictureNotCopied) {
        return Unread(path, "it is damaged, or a bitmap that the system does not load");
    }
    return messages.Said().empty() ? std::nullopt
                                   : std::optional("cannot make an icon of " + path + ": " + messages.Said());
}

} // namespace

std::optional<std::string> WhyNoIcon(const std::string& bitmapPath) {
    std::optional<std::string> cause;
    const auto error = trap([&] {
        cause = WhyUnfit(bitmapPath);
        if (!cause) {
            cause = WhyNotMade(bitmapPath);
        }
    });
    return error ? error->what() : cause;
}

} // namespace lumbrix
