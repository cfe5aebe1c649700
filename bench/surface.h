// What the measured drawings go to: an off-screen picture, and a window that shows it where there are windows.
#pragma once

#include <cstdint>
#include <memory>

namespace bench {

struct GpGraphics;

class Surface {
  public:
    static constexpr int Width = 1280;
    static constexpr int Height = 1024;

    // Null where the system refuses it.
    static std::unique_ptr<Surface> Make();

    virtual ~Surface() = default;

    // Fills the off-screen picture with white.
    virtual void Clear() = 0;

    // A new drawing surface on the off-screen picture.
    virtual GpGraphics* Begin() = 0;

    // Copies the off-screen picture to where it is seen, and waits until it is there.
    virtual void Show() = 0;
};

} // namespace bench
