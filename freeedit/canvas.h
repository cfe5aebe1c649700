// The white area on which the picture stands.
#pragma once

#include "freeedit/saving.h"
#include "freeedit/scrolling.h"
#include "toolkit/dialog.h"
#include "toolkit/offscreen.h"

namespace lumbrix {

// A window without a frame that stays above the one that owns it, with two scroll bars that pan. What it shows is drawn
// off the screen first, so that it changes at once.
class Canvas : public Dialog, public CanvasView {
  public:
    // The transform outlives the canvas.
    explicit Canvas(CanvasTransform& transform);

    bool CreateCanvas(HWND parent) { return OpenModeless(parent); }

    // Brings it above its owner again: not every display keeps it there when the owner comes to the front or gets the
    // keyboard. Being put elsewhere first, it is not taken for what is there already.
    void Raise();

    // Puts the file's picture in the place of the one before, which is not disposed of; a file that cannot be loaded
    // leaves that. The canvas shows it from the next change or repaint on. The session that it belongs to is the
    // caller's, and keeps the file open.
    void LoadCanvasImage(const std::string& path);

    // Shows the picture as the settings have it now; nothing where they are as they were the last time.
    void ApplyTransform() override;

    const CornerPoints& Points() const override { return transform_.Points(); }

    // What it captures is what it shows, also where another window covers it; beyond the canvas everything is white.
    bool Capture(const std::string& path, const CanvasArea& area) override;

  private:
    void OnStart() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override;
    void OnClose() override;

    void Scroll(int bar, ScrollLine line, const ScrollEvent& event, std::int32_t& pan);
    void Draw();
    void Show();

    CanvasTransform& transform_;
    void* image_ = nullptr; // a handle of the engine
    std::optional<OffscreenPicture> shown_;
    bool isStale_ = false; // another picture has been loaded since it was drawn
};

} // namespace lumbrix
