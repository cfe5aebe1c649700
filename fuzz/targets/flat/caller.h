// A caller of the flat interface, who takes what to call, and with what, from the input.
#pragma once

#include "fuzz/support/choices.h"
#include "fuzz/support/memorystream.h"
#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/flat/graphics.h"
#include "tests/support/flatfunctions.h"

#include <array>
#include <deque>

namespace fuzz {

using namespace imaginglibrary;

// A call whose arguments are taken from the input one after the other, which those of functions need not be.
class FlatCall {
  public:
    template <class... Arguments> explicit FlatCall(const char* name, Arguments... arguments)
        : status_(tests::CallFlat(name, arguments...)) {}

    bool IsOk() const { return status_ == Status::Ok; }

  private:
    Status status_;
};

inline constexpr std::uint64_t MostPixels = std::uint64_t{1} << 18; // of a picture that is worked on

// Eight places for handles of each kind. They hold nothing at first, and what was disposed of afterwards.
struct Handles {
    std::array<GpImage*, 8> images{};
    std::array<GpGraphics*, 4> surfaces{};
    std::array<GpFontFamily*, 2> families{};
    std::array<GpFont*, 2> fonts{};
    std::array<GpBrush*, 2> brushes{};
    std::array<GpPen*, 2> pens{};
};

template <class Handle, std::size_t Count> Handle*& PlaceIn(std::array<Handle*, Count>& places, Choices& choices) {
    return places[choices.Below(Count)];
}

// One handle in sixteen is of nothing that ever was.
template <class Handle, std::size_t Count> Handle* OneOf(std::array<Handle*, Count>& places, Choices& choices) {
    const std::uint8_t choice = choices.Byte();
    return choice < 0xF0 ? places[choice % Count] : reinterpret_cast<Handle*>(std::uintptr_t{choice} * 0x100001);
}

inline float NumberFrom(Choices& choices) {
    const std::uint8_t kind = choices.Byte();
    if (kind < 0xF8) {
        return static_cast<float>(kind) * 0.75f - 30;
    }
    constexpr float Odd[] = {1e30f, -1e30f, 0.0f / 1e-45f, 1e9f, -1e9f, 1e-30f, 70000, -70000};
    return Odd[kind - 0xF8];
}

class Caller {
  public:
    Caller(Choices& choices, std::string file);
    ~Caller();
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    void Call();

  private:
    GpImage* Image() { return OneOf(handles_.images, choices_); }
    GpImage*& NewImage() { return PlaceIn(handles_.images, choices_); }
    GpGraphics* Surface() { return OneOf(handles_.surfaces, choices_); }

    // A picture that one input has the time to work on.
    GpImage* SmallImage() {
        GpImage* image = Image();
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        FlatCall{"GdipGetImageWidth", image, &width};
        FlatCall{"GdipGetImageHeight", image, &height};
        return std::uint64_t{width} * height <= MostPixels ? image : nullptr;
    }

    PixelFormat Format() {
        constexpr std::array Formats{PixelFormat::Undefined, PixelFormat::Indexed1, PixelFormat::Indexed4,
                                     PixelFormat::Indexed8,  PixelFormat::Rgb555,   PixelFormat::Rgb565,
                                     PixelFormat::Argb1555,  PixelFormat::Rgb24,    PixelFormat::Rgb32,
                                     PixelFormat::Argb32,    PixelFormat::Pargb32,  PixelFormat::Rgb48};
        const std::size_t which = choices_.Below(Formats.size() + 1);
        return which < Formats.size() ? Formats[which] : choices_.Of<PixelFormat>();
    }

    void Load(const char* function);
    void CallOnImage(std::size_t which);
    void CallOnSurface(std::size_t which);
    void CallForText(std::size_t which);
    void CallBesides(std::size_t which);
    void LockBits();
    void ReadProperties();
    void SetProperty();
    void ListEncoders();
    void Ask();
    void Watch();
    void Save(const EncoderParameters* parameters);
    void SaveWithParameters();

    Choices& choices_;
    std::string file_;
    std::uintptr_t token_ = 0;
    std::deque<MemoryStream> streams_; // where they are found they stay
    Handles handles_;
};

} // namespace fuzz
