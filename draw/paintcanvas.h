// The canvas of the paint window: a picture off the screen, and the control that shows it.
#pragma once

#include "draw/drawingstate.h"
#include "draw/history.h"
#include "draw/surface.h"
#include "toolkit/controlwatch.h"
#include "toolkit/offscreen.h"

#include <functional>
#include <optional>
#include <string>

namespace lumbrix {

// Stands before its control for the mouse. The picture has the size of the control, border
// and all.
class PaintCanvas : public Surface, private SnapshotCanvas, private ControlWatch {
  public:
    // What the canvas asks of its window.
    struct Window {
        std::function<void(const std::string&)> showStatus;
        std::function<void()> postTextCommand;
        std::function<void(std::string&)> enterText;
    };

    // The state outlives the canvas.
    PaintCanvas(DrawingState& state, Window window) : state_(state), window_(std::move(window)) {}

    // Takes its place before a control, with a white picture.
    void TakePlace(HWND control);
    void LeaveControl() { Detach(); }

    // Draws the file from the upper left corner on, stretched by one pixel in each direction, and repaints. What lies
    // beyond the canvas is cut off.
    void LoadPicture(const std::string& path, PixelSize size);

    // Writes the picture as a BMP file of 24 bits. Whether that was possible.
    bool SavePicture(const std::string& path) const;

    // Shows the picture in the control's device context.
    void Show(HDC context) const;

    void Undo() { history_.DrawUndo(*this); }
    void Redo() { history_.DrawRedo(*this); }

    // Takes the font and frees it when another comes.
    void SetTextFont(OwnedFont font);

    void TakeMouse() override;
    void ReleaseMouse() override { ReleaseCapture(); }
    void Attach(Painting painting) override { painting_ = painting; }
    void SetMix(RasterMix mix) override;
    void MoveTo(PixelPoint place) override;
    void LineTo(PixelPoint place, WindowColor color) override;
    void PutShape(const Shape& shape) override;
    WindowColor PixelAt(PixelPoint place) override;
    void FillArea(PixelPoint place, WindowColor area, const BrushChoice& brush) override;
    void PutText(PixelPoint place, const std::string& line, WindowColor color) override;
    std::int32_t HeightOfLine(const std::string& line) override;
    void ClearWith(WindowColor color) override;
    void Repaint() override;
    void TakeSnapshot() override { history_.TakeSnapshot(*this); }
    void ShowStatus(const std::string& text) override { window_.showStatus(text); }
    void PostTextCommand() override { window_.postTextCommand(); }
    void EnterText(std::string& text) override { window_.enterText(text); }

  private:
    std::string ReadBits() override;
    void ExchangeBits(std::string& bits) override;
    void RepaintBits() override { Repaint(); }

    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override;

    HDC Context() const { return picture_->Context(); }
    bool HasPicture() const { return picture_ && *picture_; }
    OwnedPen PenOf(WindowColor color) const;
    void HasDrawn();

    DrawingState& state_;
    Window window_;
    History history_;
    Painting painting_ = Painting::AtOnce;
    OwnedFont font_; // lives longer than the picture's context, which has it selected
    std::optional<OffscreenPicture> picture_;
};

} // namespace lumbrix
