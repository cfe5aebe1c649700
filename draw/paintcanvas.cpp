// The canvas of the paint window: a picture off the screen, and the control that shows it.
#include "draw/paintcanvas.h"

#include "draw/canvasbits.h"
#include "draw/tools.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "toolkit/bitmapfile.h"
#include "toolkit/dialog.h"
#include "toolkit/mousepoint.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lumbrix {

namespace {

OwnedBrush BrushFor(const BrushChoice& choice) {
    switch (choice.kind) {
    case BrushKind::Solid:
        return OwnedBrush(CreateSolidBrush(choice.color));
    case BrushKind::Hatched:
        return OwnedBrush(CreateHatchBrush(choice.hatch, choice.color));
    case BrushKind::None:
        break;
    }
    return {};
}

PixelSize WholeSizeOf(HWND control) {
    RECT frame{};
    GetWindowRect(control, &frame);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

} // namespace

// As large as the control with its border, which hides the last columns and rows. Every pixel takes four bytes, so that
// a snapshot is a plain copy.
void PaintCanvas::TakePlace(HWND control) {
    ControlWatch::Attach(control);
    picture_.emplace(WholeSizeOf(control), 32, OffscreenPicture::FirstRow::Top);
    ClearWith(drawwindow::CanvasColor);
}

LRESULT PaintCanvas::OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    const PixelPoint place = SignedMousePoint(static_cast<std::uint32_t>(longParameter));
    switch (message) {
    case WM_LBUTTONDOWN:
        PressTool(state_, *this, place);
        break;
    case WM_MOUSEMOVE:
        MoveTool(state_, *this, place, static_cast<std::uint32_t>(wordParameter));
        break;
    case WM_LBUTTONUP:
        ReleaseTool(state_, *this);
        break;
    case WM_ERASEBKGND:
        return 1; // the picture covers everything
    default:
        break;
    }
    return PassOn(message, wordParameter, longParameter);
}

void PaintCanvas::LoadPicture(const std::string& path, PixelSize size) {
    if (!HasPicture()) {
        return;
    }
    const OwnedBitmap loaded(static_cast<HBITMAP>(
        LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, size.width + 1, size.height + 1, LR_LOADFROMFILE)));
    const OwnedContext context(CreateCompatibleDC(Context()));
    const SelectedObject selected(context.Get(), loaded.Get());
    BitBlt(Context(), 0, 0, size.width + 1, size.height + 1, context.Get(), 0, 0, SRCCOPY);
    Repaint();
}

bool PaintCanvas::SavePicture(const std::string& path) const {
    if (!HasPicture()) {
        return false;
    }
    const PixelSize size = picture_->Size();
    const OffscreenPicture copy(size, 24);
    if (!copy) {
        return false;
    }
    BitBlt(copy.Context(), 0, 0, size.width, size.height, Context(), 0, 0, SRCCOPY);
    return !trap([&] { WriteWholeFile(path, BitmapFile(size, copy.Pixels(), PixelBytes::Omitted)); });
}

void PaintCanvas::Show(HDC context) const {
    if (HasPicture()) {
        BitBlt(context, 0, 0, picture_->Size().width, picture_->Size().height, Context(), 0, 0, SRCCOPY);
    }
}

void PaintCanvas::SetTextFont(OwnedFont font) {
    if (HasPicture()) {
        SelectObject(Context(), font.Get());
        font_ = std::move(font);
    }
}

void PaintCanvas::TakeMouse() {
    SetCapture(Watched());
    SetFocus(Watched());
}

void PaintCanvas::SetMix(RasterMix mix) { SetROP2(Context(), ValidMix(static_cast<std::int32_t>(mix))); }

void PaintCanvas::MoveTo(PixelPoint place) { MoveToEx(Context(), place.x, place.y, nullptr); }

OwnedPen PaintCanvas::PenOf(WindowColor color) const {
    return OwnedPen(CreatePen(state_.penType, state_.penWidth, color));
}

void PaintCanvas::LineTo(PixelPoint place, WindowColor color) {
    const OwnedPen pen = PenOf(color);
    if (!pen) {
        return;
    }
    const SelectedObject selected(Context(), pen.Get());
    for (int retries = 0; !::LineTo(Context(), place.x, place.y) && retries < LineRetries; ++retries) {
        Sleep(LinePauseMilliseconds);
    }
    HasDrawn();
}

void PaintCanvas::PutShape(const Shape& shape) {
    const RoundedRectangle rounded = RoundedRectangleOf(shape);
    const OwnedPen pen = PenOf(shape.penColor);
    if (!pen) {
        return;
    }
    const OwnedBrush brush = BrushFor(BrushOf(shape.fillColor, shape.fillStyle));
    const SelectedObject selectedPen(Context(), pen.Get());
    const SelectedObject selectedBrush(Context(),
                                       brush ? static_cast<HGDIOBJ>(brush.Get()) : GetStockObject(NULL_BRUSH));
    const PixelRectangle& edges = rounded.edges;
    RoundRect(Context(), edges.left, edges.top, edges.right, edges.bottom, rounded.roundingWidth,
              rounded.roundingHeight);
    HasDrawn();
}

WindowColor PaintCanvas::PixelAt(PixelPoint place) { return GetPixel(Context(), place.x, place.y); }

void PaintCanvas::FillArea(PixelPoint place, WindowColor area, const BrushChoice& choice) {
    const OwnedBrush brush = BrushFor(choice);
    if (brush) {
        const SelectedObject selected(Context(), brush.Get());
        ExtFloodFill(Context(), place.x, place.y, area, FLOODFILLSURFACE);
        HasDrawn();
    }
}

void PaintCanvas::PutText(PixelPoint place, const std::string& line, WindowColor color) {
    SetTextColor(Context(), color);
    SetBkColor(Context(), 0);
    SetBkMode(Context(), TRANSPARENT);
    TextOutA(Context(), place.x, place.y, line.data(), static_cast<int>(line.size()));
    HasDrawn();
}

std::int32_t PaintCanvas::HeightOfLine(const std::string& line) {
    SIZE size{};
    GetTextExtentPoint32A(Context(), line.data(), static_cast<int>(line.size()), &size);
    return size.cy;
}

void PaintCanvas::ClearWith(WindowColor color) {
    if (HasPicture()) {
        const OwnedBrush brush(CreateSolidBrush(color));
        const RECT all{0, 0, picture_->Size().width, picture_->Size().height};
        FillRect(Context(), &all, brush.Get());
        HasDrawn();
    }
}

void PaintCanvas::HasDrawn() {
    if (painting_ == Painting::AtOnce) {
        Repaint();
    }
}

// At once, and without the detour over a message to paint.
void PaintCanvas::Repaint() {
    if (Watched() != nullptr) {
        const WindowContext context(Watched());
        Show(context.Get());
    }
}

std::string PaintCanvas::ReadBits() {
    return HasPicture() ? CanvasBitsOf(picture_->Size(), picture_->Pixels()) : std::string();
}

// In place, for a snapshot of a large canvas takes longer to make than to fill.
void PaintCanvas::ExchangeBits(std::string& bits) {
    if (!HasPicture() || SizeOfCanvasBits(bits) != picture_->Size()) {
        bits = ReadBits();
        return;
    }
    std::array<std::uint8_t, 1 << 12> before; // fits the nearest cache, with what it is exchanged for
    const auto pixels = picture_->Pixels();
    char* const snapshot = PixelsOfCanvasBits(bits);
    for (std::size_t at = 0; at < pixels.size(); at += before.size()) {
        const std::size_t count = std::min(before.size(), pixels.size() - at);
        std::memcpy(before.data(), &pixels[at], count);
        std::memcpy(&pixels[at], snapshot + at, count);
        std::memcpy(snapshot + at, before.data(), count);
    }
}

} // namespace lumbrix
