// A bitmap of the imaging library in place of a window's off-screen picture; a copy in memory in place of the window.
#include "bench/surface.h"

#include "bench/library.h"
#include "bench/workload.h"

#include <cstring>
#include <vector>

namespace bench {

namespace {

constexpr std::uint32_t Rgb32 = 0x00022009;

// The bitmap's memory cannot be had from outside, so clearing and showing work on blocks of the same size.
class BitmapSurface : public Surface {
  public:
    explicit BitmapSurface(GpImage* bitmap) : bitmap_(bitmap), cleared_(Bytes), shown_(Bytes) {}
    ~BitmapSurface() override { Call("GdipDisposeImage", bitmap_); }

    void Clear() override {
        std::memset(cleared_.data(), 0xFF, Bytes);
        Keep(cleared_);
    }

    GpGraphics* Begin() override {
        GpGraphics* graphics = nullptr;
        Call("GdipGetImageGraphicsContext", bitmap_, &graphics);
        return graphics;
    }

    void Show() override {
        std::memcpy(shown_.data(), cleared_.data(), Bytes);
        Keep(shown_);
    }

  private:
    static constexpr std::size_t Bytes = std::size_t{Width} * Height * 4;

    // Makes the compiler believe that somebody looks.
    static void Keep(std::vector<std::uint8_t>& bytes) { asm volatile("" : : "r"(bytes.data()) : "memory"); }

    GpImage* bitmap_;
    std::vector<std::uint8_t> cleared_;
    std::vector<std::uint8_t> shown_;
};

} // namespace

std::unique_ptr<Surface> Surface::Make() {
    GpImage* bitmap = nullptr;
    const void* const noPixels = nullptr;
    const int status = Call("GdipCreateBitmapFromScan0", std::int32_t{Width}, std::int32_t{Height}, std::int32_t{0},
                            Rgb32, noPixels, &bitmap);
    return status == 0 ? std::make_unique<BitmapSurface>(bitmap) : nullptr;
}

} // namespace bench
