// A picture of one bit a pixel in memory.
#include "draw/iconmonochrome.h"

namespace lumbrix {

MonochromePicture::MonochromePicture(PixelSize size)
    : bitmap_(CreateBitmap(size.width, size.height, 1, 1, nullptr)), context_(CreateCompatibleDC(nullptr)) {
    isSelected_ = SelectObject(context_.Get(), bitmap_.Get()) != nullptr;
}

} // namespace lumbrix
