// The white area on which the picture stands.
#include "freeedit/canvas.h"

#include "freeedit/capture.h"
#include "freeedit/transformlayout.h"
#include "imaging/exports/internal.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "toolkit/bitmapfile.h"

#include <algorithm>

namespace lumbrix {

namespace {

static_assert(static_cast<int>(ScrollCode::LineBack) == SB_LINEUP && SB_LINEUP == SB_LINELEFT);
static_assert(static_cast<int>(ScrollCode::LineForward) == SB_LINEDOWN && SB_LINEDOWN == SB_LINERIGHT);
static_assert(static_cast<int>(ScrollCode::PageBack) == SB_PAGEUP && SB_PAGEUP == SB_PAGELEFT);
static_assert(static_cast<int>(ScrollCode::PageForward) == SB_PAGEDOWN && SB_PAGEDOWN == SB_PAGERIGHT);
static_assert(static_cast<int>(ScrollCode::ThumbMoved) == SB_THUMBTRACK);

constexpr UINT WholeScrollBar = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

SCROLLINFO ScrollInfo(UINT mask, int position) {
    return {sizeof(SCROLLINFO), mask, LeastPan, MostPan, PanPage, position, 0};
}

void MakeWhite(const OffscreenPicture& picture) { std::ranges::fill(picture.Pixels(), std::uint8_t{0xFF}); }

} // namespace

Canvas::Canvas(CanvasTransform& transform) : Dialog(transformwindow::CanvasLayout), transform_(transform) {}

void Canvas::OnStart() {
    for (const int bar : {SB_VERT, SB_HORZ}) {
        const SCROLLINFO info = ScrollInfo(WholeScrollBar, 0);
        SetScrollInfo(Handle(), bar, &info, TRUE);
    }
}

std::optional<LRESULT> Canvas::OnMessage(UINT message, WPARAM wordParameter, LPARAM /*longParameter*/) {
    const ScrollEvent scroll{static_cast<ScrollCode>(LOWORD(wordParameter)), HIWORD(wordParameter)};
    switch (message) {
    case WM_ERASEBKGND:
        return 1; // the paint covers everything
    case WM_PAINT: {
        PAINTSTRUCT paint;
        BeginPaint(Handle(), &paint);
        EndPaint(Handle(), &paint);
        if (isStale_) {
            Draw();
        }
        Show();
        return 0;
    }
    case WM_SIZE:
        Draw();
        return 0;
    case WM_VSCROLL:
        Scroll(SB_VERT, ScrollLine::Vertical, scroll, transform_.settings.panY);
        return 0;
    case WM_HSCROLL:
        Scroll(SB_HORZ, ScrollLine::Horizontal, scroll, transform_.settings.panX);
        return 0;
    default:
        return std::nullopt;
    }
}

// It cannot be closed on its own.
void Canvas::OnClose() { PostMessageA(GetWindow(Handle(), GW_OWNER), WM_CLOSE, 0, 0); }

// The pan is where the event goes to, also where the bar stays behind at its end.
void Canvas::Scroll(int bar, ScrollLine line, const ScrollEvent& event, std::int32_t& pan) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = WholeScrollBar;
    GetScrollInfo(Handle(), bar, &info);
    if (const auto position = ScrolledPosition(event, info.nPos, static_cast<std::int32_t>(info.nPage), line)) {
        const SCROLLINFO moved = ScrollInfo(SIF_POS, *position);
        SetScrollInfo(Handle(), bar, &moved, TRUE);
        pan = *position;
        ApplyTransform();
    }
}

void Canvas::Raise() {
    for (const HWND above : {GetWindow(Handle(), GW_OWNER), HWND_TOP}) {
        SetWindowPos(Handle(), above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

void Canvas::LoadCanvasImage(const std::string& path) {
    PixelSize size;
    ::LoadCanvasImage(path.c_str(), &image_, &size.width, &size.height);
    transform_.PlaceNaturally(size);
    isStale_ = true;
}

void Canvas::ApplyTransform() {
    if (transform_.Apply()) {
        Draw();
        Show();
    }
}

void Canvas::Draw() {
    isStale_ = false;
    if (!shown_ || shown_->Size() != ClientSizeOf(Handle())) {
        shown_.emplace(ClientSizeOf(Handle()), 32, OffscreenPicture::FirstRow::Top);
    }
    if (*shown_) {
        MakeWhite(*shown_);
        const auto& [topLeft, topRight, bottomLeft] = transform_.Points();
        const std::int32_t points[]{topLeft.x, topLeft.y, topRight.x, topRight.y, bottomLeft.x, bottomLeft.y};
        DrawCanvasImage(image_, points, shown_->Context());
    }
}

void Canvas::Show() {
    if (shown_ && *shown_) {
        const WindowContext context(Handle());
        BitBlt(context.Get(), 0, 0, shown_->Size().width, shown_->Size().height, shown_->Context(), 0, 0, SRCCOPY);
    }
}

bool Canvas::Capture(const std::string& path, const CanvasArea& area) {
    if (path.empty() || !IsWindow(Handle()) || !shown_ || !*shown_) {
        return false;
    }
    const CanvasArea captured = CapturedArea(ClientSizeOf(Handle()), area);
    const OffscreenPicture picture({captured.width, captured.height}, 24);
    if (!picture) {
        return false;
    }
    MakeWhite(picture);
    BitBlt(picture.Context(), -captured.left, -captured.top, shown_->Size().width, shown_->Size().height,
           shown_->Context(), 0, 0, SRCCOPY);
    return !trap([&] { WriteWholeFile(path, BitmapFile(picture.Size(), picture.Pixels(), PixelBytes::Stated)); });
}

} // namespace lumbrix
